// The page of the web console, as browsers get it. A build bundles it from the sources in this folder.
#pragma once

#include <span>
#include <string_view>

namespace front
{

// A PageFile is a file that browsers load. Its memory lives as long as the program.
struct PageFile {
    std::string_view path;   // "/" for the page itself
    std::string_view type;   // as text/html; charset=utf-8
    std::string_view packed; // by gzip
    bool is_hashed = false;  // the path names the content, which never changes
};

// Returns all files of the page.
std::span<const PageFile> page_files();

} // namespace front
