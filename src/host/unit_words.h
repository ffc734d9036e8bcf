#pragma once
// Unit tables. The text of a table has a default word and then groups of numbers, each with its
// word: "days;1 day" or, in Russian, "дней;1,21,31 день;2-4,22-24 дня".

#include "horivo_host.h"

/// Reads the text of unit table `table` (0 to 4) into the record. Reading stops at the first error;
/// the ranges before it are kept. Ranges in the group with the error have no text, so their numbers
/// get the default word. Reading also stops after a word that had to be truncated to fit.
void ParseUnitTable(CLangFile& file, std::uint32_t table, const HorivoWideChar* text) noexcept;

/// The word for `number` units of a table in the record; the last two digits of the number decide.
/// Gives "s", "m", "h", "d" or "w" when the table has no words, and null for a table above 4.
const HorivoWideChar* UnitWord(const CLangFile& file, std::uint32_t table,
                               std::uint32_t number) noexcept;
