#pragma once
// Unit tables: a default word, then groups of numbers with the word that goes with them,
// "days;1 day" or, in Russian, "дней;1,21,31 день;2-4,22-24 дня".

#include "horivo_host.h"

/// Reads the text of unit table `table` (0 to 4) into the record. A fault ends the table and keeps
/// the ranges before it; those of its own group have no text, and their numbers get the default
/// word. A word that does not fit is cut and the last one.
void ParseUnitTable(CLangFile& file, std::uint32_t table, const HorivoWideChar* text) noexcept;

/// The word for `number` units by the record's tables, by the last two digits; "s", "m", "h", "d"
/// or "w" when the table has none. Null for a table above 4.
const HorivoWideChar* UnitWord(const CLangFile& file, std::uint32_t table,
                               std::uint32_t number) noexcept;
