// The interface below /api/v1 as a document of OpenAPI 3.1, made of the routes and of the catalogue.
#pragma once

#include <string>

namespace front
{

std::string openapi_text();

} // namespace front
