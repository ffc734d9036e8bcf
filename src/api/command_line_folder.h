#pragma once

#include <string>
#include <string_view>

/// The folder of the program that is named first on a command line, with its trailing backslash. It
/// is taken from the text in quotes when the line begins with a quote, else from the whole line,
/// and goes up to the last backslash. Empty when there is no backslash after the first character,
/// and when the folder is too long for a path.
///
/// Deliberate: an unquoted line with arguments that contain backslashes gives a wrong folder. The
/// only file that the map reads there, "buttons.png", is then searched beside the program.
std::wstring FolderOfCommandLine(std::wstring_view commandLine);
