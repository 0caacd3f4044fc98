"""Simulated OLTs for tests with pytest."""

from .simulator import SimulatedOlt, Simulator, SimulatorError

__all__ = ["SimulatedOlt", "Simulator", "SimulatorError"]
