#pragma once
// Unit tables: each has the words for one unit of time, which depend on the number before the word.
// The text of a table has a default word and then groups of numbers, each with its word: "days;1
// day" or, in Russian, "дней;1,21,31 день;2-4,22-24 дня".

#include "horivo_host.h"

/// Reads the text of unit table `table` (0 to 4) into the language record. Reading stops at the
/// first error; the ranges before the error are kept. Ranges in the group with the error have no
/// text, so their numbers get the default word. Reading also stops when the unitBuffer of the table
/// is full; the last word may then be truncated.
void ParseUnitTable(CLangFile& file, std::uint32_t table, const HorivoWideChar* text) noexcept;

/// The word of a table in the language record for `number` units. Only the last two digits matter.
/// Gives "s", "m", "h", "d" or "w" when the table has no words, and null for a table above 4.
const HorivoWideChar* UnitWord(const CLangFile& file, std::uint32_t table,
                               std::uint32_t number) noexcept;
