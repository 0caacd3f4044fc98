// The page of the web console, as browsers get it. A build bundles it from the sources in this folder.
#pragma once

#include <span>
#include <string_view>

namespace front
{

struct PageFile {
    std::string_view path;                 // where it is served; "/" is the page itself
    std::string_view type;                 // its media type
    std::string_view tag;                  // follows from its bytes
    std::span<const unsigned char> packed; // by gzip
};

// Returns all files. Those below /assets/ have names that follow from their bytes: a browser may keep them for good.
std::span<const PageFile> page_files();

} // namespace front
