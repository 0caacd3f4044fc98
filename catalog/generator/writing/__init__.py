"""What is generated, one module a file."""
