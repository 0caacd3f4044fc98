// This file describes an operation, or a local function, as the catalogue does: as a page for people, or as an object
// for programs.
#pragma once

#include <string_view>

#include "catalogue.h"
#include "output/json.h"
#include "output/output.h"

namespace ponctl
{

inline constexpr std::string_view local_class = "local"; // the class of functions that make no request

void print_page(const Output &output, const catalogue::Operation &operation);
void print_page(const Output &output, const catalogue::Function &function);

void write_operation(JsonText &json, const catalogue::Operation &operation);
void write_function(JsonText &json, const catalogue::Function &function);

} // namespace ponctl
