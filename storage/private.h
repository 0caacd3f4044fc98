// What a program keeps may hold passwords: its files and folders are for its own user only, whatever the umask is.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace storage
{

// Makes the file if there is none. A file that cannot be made is left to whoever opens it and finds out why.
void make_private_file(const std::string &file);

// Makes a file with this content. Throws std::runtime_error, also when there is a file already.
void write_private_file(const std::string &file, std::string_view content);

// Returns whether there is a file that belongs to another user, and so must not be used.
bool is_of_another_user(const std::string &file);

// Takes the permissions of other users from a file, if there is one and its file system knows such permissions.
void make_private(const std::string &file);

// Makes the folder, and those on the way to it that are missing. Folders that are there stay as they are. Throws
// std::filesystem::filesystem_error.
void make_private_folders(const std::filesystem::path &folder);

} // namespace storage
