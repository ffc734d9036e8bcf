#pragma once

#include <string>
#include <string_view>

/// The folder of the program named first on a command line, with its trailing backslash: what
/// stands inside the quotes when the line begins with one, else the whole line, up to the last
/// backslash. Empty when there is none behind the first character, or when the folder would not fit
/// a path. Deliberate: an unquoted line with arguments that hold backslashes gives their folder;
/// who looks for a file there has a second place to look.
std::wstring FolderOfCommandLine(std::wstring_view commandLine);
