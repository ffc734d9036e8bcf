#pragma once

#include <string>
#include <string_view>

/// Returns the folder of the program on a command line, with a trailing backslash. When the line
/// begins with a quotation mark, uses the text between the quotation marks, otherwise the whole
/// line; the folder is this text up to the last backslash. Returns an empty text when there is no
/// backslash after the first character, or when the folder has 260 characters or more.
///
/// Deliberate: for a line without quotation marks whose arguments contain backslashes, the result
/// is a wrong folder. The map reads only "buttons.png" there, and then also searches for this file
/// in the folder of the executable.
std::wstring FolderOfCommandLine(std::wstring_view commandLine);
