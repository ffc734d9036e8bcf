#pragma once
// Turns the names of countries and cities into the paths of the photo tree:
//
//   <root>\<country>\index.tsv            the country's photos
//   <root>\<country>\<city>\index.tsv     the city's photos
//   <root>\<country>\<city>\<number>.jpg
//
// Names come from the host and from index files and are not trusted: no name may lead to a folder
// outside the root.

#include <cstddef>
#include <cstdint>

#include "base/wide_text.h"

/// Maximum length of a path including the terminator, characters. This is the limit of Windows.
inline constexpr std::size_t kPathLimit = 260;

/// How CleanPlaceName handles the spaces in a name.
enum class Spaces { Keep, Underscore };

/// Returns `name` without control characters and without * / : ; ? \ and DEL. Throws
/// std::bad_alloc. @param spaces  whether spaces stay or become underscores
WideString CleanPlaceName(WideView name, Spaces spaces = Spaces::Keep);

/// Whether a cleaned name can be the name of a folder. A name that consists only of dots and spaces
/// cannot be one: Windows would treat it as the current folder or as its parent.
bool IsFolderName(WideView cleaned) noexcept;

/// Forms the path of the folder of a country (`city` empty) or of a city, with a backslash at its
/// end. Throws std::bad_alloc.
/// @param root  the root of the photo tree with a backslash at its end
/// @return false and an empty `path` when `country` or `root` is empty, when a name cannot be a
///         folder name, or when the path is too long
bool FormPhotoFolder(WideView root, WideView country, WideView city, WideString& path);

/// Forms the path of photo `number`; otherwise like FormPhotoFolder.
bool FormPhotoPath(WideView root, WideView country, WideView city, std::int32_t number,
                   WideString& path);

/// Appends a file name to a folder that ends in a backslash. Returns false and empties `path` when
/// the result is too long. Throws std::bad_alloc.
bool AppendFileName(WideString& path, WideView fileName);
