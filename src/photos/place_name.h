#pragma once
// Names of countries and cities as folder names, and the paths of the photo tree:
//
//   <root>\<country>\index.tsv            the country's photos
//   <root>\<country>\<city>\index.tsv     the city's photos
//   <root>\<country>\<city>\<number>.jpg
//
// Names come from the host and from index files, so nothing here may lead out of the root.

#include <cstddef>
#include <cstdint>

#include "base/wide_text.h"

/// Paths of this many characters or more are not formed.
inline constexpr std::size_t kPathLimit = 260;

enum class Blanks { Keep, Underline };

/// `name` without control characters and without * / : ; ? \ and DEL. Throws std::bad_alloc.
/// @param blanks  whether blanks stay or become '_'
WideString CleanPlaceName(WideView name, Blanks blanks = Blanks::Keep);

/// Whether a cleaned name can be a folder of its own: nothing but dots and blanks would be the
/// folder itself, the one above it, or no name at all.
bool IsFolderName(WideView cleaned) noexcept;

/// The folder of a country (`city` empty) or of a city, with a backslash at its end.
/// @param root  with a backslash at its end
/// @return false, with `path` empty, when there is no country or no root, when a name makes no
///         folder, or when the path is too long. Throws std::bad_alloc.
bool FormPhotoFolder(WideView root, WideView country, WideView city, WideString& path);

/// The path of photo `number`; otherwise as FormPhotoFolder.
bool FormPhotoPath(WideView root, WideView country, WideView city, std::int32_t number,
                   WideString& path);

/// Appends a file name to a folder that ends in a backslash; false, with `path` empty, when the
/// result is too long. Throws std::bad_alloc.
bool AppendFileName(WideString& path, WideView fileName);
