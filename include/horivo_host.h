/** @file
 * Services that the map library shares with its host: language files, unit words, the texts of
 * dialogs and menus, time zones and local times, administrative switches, the diagnostic log.
 *
 * They are a static library, horivo_host; the DLL exports none of them. Each module that links the
 * library has its own copy of its data. The DLL links only the time zones, the local times, and the
 * switches, which it reads together with its settings. Besides the names of the host's cities, the
 * map shows one text in the user's language, which the host passes by SetLocalString.
 *
 * For C++20. The header does not include windows.h: it declares the handle types under their usual
 * names and may be included before or after windows.h.
 *
 * Order of the calls in a host:
 *   StartHostServices   first; SetDirectory, SetBaseName and SetExtension may come before or after
 *                       it
 *   CreateLogMutex      before the first thread writes to the log
 *   ReadAdminFlags      at the start, and whenever the switches may have changed
 *   SetLanguage         when the user chooses a language; localize open dialogs and menus again
 *
 * Threads: any thread may use the log and the switches. Only one thread at a time may use a
 * TimeZoneTable or a ZoneRuleCache. Everything else is for the host's user interface thread
 * (SetLanguage sets the locale of the thread that calls it). No function throws. Text is UTF-16
 * unless a comment says otherwise; a pointer to text may be null where its comment says so.
 */
#ifndef HORIVO_HOST_H
#define HORIVO_HOST_H

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

#include "horivo_map.h"

struct HINSTANCE__;
struct HMENU__;
struct _SYSTEMTIME;
struct _TIME_ZONE_INFORMATION;

/* ---- Language record ----------------------------------------------------------------------- */

/** Longest texts of the record, in characters without the terminator. */
/** @{ */
inline constexpr std::int32_t kLangPathChars = 260;
inline constexpr std::int32_t kLangBaseNameChars = 64;
inline constexpr std::int32_t kLangExtensionChars = 8;
inline constexpr std::int32_t kLangAbbrevChars = 15;
/** @} */

inline constexpr std::uint32_t kUnitTables = 5;   /**< seconds, minutes, hours, days, weeks */
inline constexpr std::uint32_t kUnitRanges = 100; /**< ranges in one table */
inline constexpr std::uint32_t kUnitChars = 1024; /**< characters of one table's words, including
                                                       the terminators */

/** A range of numbers modulo 100 that have the same word; both ends are included. */
struct UnitRange {
    std::uint8_t low;  /**< 0 to 99 */
    std::uint8_t high; /**< 0 to 99 */
};

/** The language state of a module. All texts are NUL-terminated. */
struct CLangFile {
    std::uint32_t langId; /**< Windows locale identifier; initially 0x400 (user default) */
    HorivoWideChar extension[kLangExtensionChars + 1]; /**< of language files; initially ".ini" */
    HorivoWideChar baseName[kLangBaseNameChars + 1];   /**< initially the program's name without its
                                                          extension, at most 63 characters */
    HorivoWideChar directory[kLangPathChars + 1]; /**< of language files; initially the program's,
                                                     with a trailing backslash */
    HorivoWideChar langFilePath[kLangPathChars + 1]; /**< of the current language; empty: none */
    HorivoWideChar fallbackFilePath[kLangPathChars + 1]; /**< of "en"; empty: none */
    HorivoWideChar
        langAbbrev[kLangAbbrevChars + 1]; /**< lower case; initially the user default's */
    HINSTANCE__* resourceModule;          /**< string resources; null: none */
    std::uint32_t
        unitStringIds[kUnitTables];       /**< resource identifier of each unit table; 0: unused */
    std::uint16_t unitCount[kUnitTables]; /**< number of ranges in use */
    UnitRange unitRanges[kUnitTables][kUnitRanges]; /**< the first unitCount of each are in use */
    const HorivoWideChar* unitTexts[kUnitTables][kUnitRanges]; /**< each range's word in unitBuffer;
                                                                  null when its group has an error:
                                                                  the default word applies then */
    HorivoWideChar unitBuffer[kUnitTables]
                             [kUnitChars]; /**< the default word, then the ranges' words */

    CLangFile() = default;
    CLangFile(const CLangFile&) = delete; /**< unitTexts points into this record */
    CLangFile& operator=(const CLangFile&) = delete;
    ~CLangFile() = default;
};

/** This module's language record. The first use puts it into its initial state; the functions below
 * change it. */
const CLangFile& LangFile() noexcept;

/** Names of the days (0 Sunday to 6 Saturday) and of the months (0 January to 11 December) of the
 * locale that SetLanguage set, at most 16 characters each; empty before the first call of
 * SetLanguage. */
/** @{ */
extern HorivoWideChar dayNames[7][24];
extern HorivoWideChar monthNames[12][24];
/** @} */

/* ---- Choosing the language ----------------------------------------------------------------- */

/** Loads "res_en.dll" from the program's directory as a data file, registers it with the unit
 * tables 257 to 261 and selects the language "en". Only the first call does anything.
 * @return whether the module was loaded. Without it, strings come only from the language files and
 *         GetUnitWord gives its built-in words, because SetLanguage reads unit tables only when a
 *         module is registered. */
bool StartHostServices() noexcept;

/** Resets the record to its initial state. A host need not call this at its start: the record has
 * that state from its first use on. */
void InitLangFile() noexcept;

/** Set the directory of the language files (a full path, with or without a trailing backslash), the
 * beginning of their names, and their extension (with its dot). Null or an empty text clears the
 * field; a text that is too long is truncated. Each function then searches again for the files of
 * the current language and of "en".
 * @return whether the file of "en" exists. */
/** @{ */
bool SetDirectory(const HorivoWideChar* path) noexcept;
bool SetBaseName(const HorivoWideChar* name) noexcept;
bool SetExtension(const HorivoWideChar* extension) noexcept;
/** @} */

/** Registers the host's string resources and the string identifiers of the five unit tables; a null
 * `ids` means that there are none. The module must stay loaded. Unit words change only at the next
 * SetLanguage; a table that then has no module or no identifier keeps its words. */
void SetResources(HINSTANCE__* module, const std::uint32_t* ids) noexcept;

/** Chooses the language with this Windows abbreviation ("DEU", upper or lower case); null or an
 * empty text chooses the user's own. Sets the locale of the calling thread, the day and month
 * names, the language file and, when resources are registered, the unit words. When no installed
 * locale has the abbreviation (none has "en"), the user's locale is set, and the first two letters
 * still choose the language file. Open menus and dialogs keep their texts. */
void SetLanguage(const HorivoWideChar* abbrev) noexcept;

/** The current Windows locale identifier. */
std::uint32_t GetLanguageId() noexcept;

/** The installed locale with this abbreviation (upper or lower case); 0x400, the user's default,
 * when there is none. */
std::uint32_t FindLocaleForAbbrev(const HorivoWideChar* abbrev) noexcept;

/** Forms the path of a language's file, such as `directory\baseName_xx.ini`, and checks whether
 * that file exists.
 * @param abbrev   Windows abbreviation, of which only the first two letters matter; null means the
 *                 current language, an empty text the ISO 639 code of the current locale
 * @param outPath  room for kLangPathChars + 1 characters; gets the path even when there is no such
 *                 file, or an empty text when there is no base name or the path is too long
 * @return whether the file exists; false when `outPath` is null */
bool FindLanguageFile(const HorivoWideChar* abbrev, HorivoWideChar* outPath) noexcept;

/* ---- Texts --------------------------------------------------------------------------------- */

/** Writes the text `id` into `buffer`. The text comes from the language file, with its escapes
 * resolved; when the file does not have it, from the string resources of `module`; otherwise it is
 * empty. A text that is too long is truncated.
 * @param module   may be null: then no resources are searched
 * @param id       number of the text, in the language file and in the resources
 * @param buffer   gets the text and always a terminator; may be null
 * @param size     characters in `buffer`, terminator included
 * @param section  of the language file; null means "StringTable"
 * @return the length; 0 when `buffer` is null or `size` is below 1 */
std::int32_t LoadLocalString(HINSTANCE__* module, std::uint32_t id, HorivoWideChar* buffer,
                             std::int32_t size, const HorivoWideChar* section = nullptr) noexcept;

/** Sets the texts of an open dialog from the section `dialogName` (at most 62 characters). The key
 * "Caption" is the dialog's title. The number of a control is the key of its text; this applies to
 * controls of the classes "Button" and "Static", also inside other controls. Controls with an
 * identifier below 1 or with 65535 (which -1 becomes in a 16-bit template) are left alone. A text
 * that the language file lacks comes from the file of "en"; when that file lacks it too, the old
 * text stays.
 * @return false when there is no such window, no name or no language file. */
bool LocalizeDialog(HWND__* dialog, const HorivoWideChar* dialogName) noexcept;

/** Sets the texts of a menu and of its submenus from `section`, at most 255 characters each. The
 * key of a command is its identifier. The key of an item that opens a submenu is its present text,
 * of which only ASCII letters, digits, "-", "_" and "." are kept and spaces become "_". As this
 * text is replaced as well, load the menu anew before you localize it to another language. The
 * escape "\t" has no meaning in these texts; use a tab character.
 * @return whether the text of any item was set. */
bool LocalizeMenu(HMENU__* menu, const HorivoWideChar* section) noexcept;

/** Shows a message box with an OK button. LoadLocalString gives its text (at most 128 characters)
 * and its caption (at most 32). Returns the result of MessageBoxW. */
std::int32_t LocalMessageBox(HWND__* owner, HINSTANCE__* module, std::uint32_t textId,
                             std::uint32_t captionId,
                             const HorivoWideChar* section = nullptr) noexcept;

/** The word that follows `number` in a duration of seconds, minutes, hours, days or weeks (table 0
 * to 4). The last two digits of the number decide: 102 gives the word of 2, "days". A table without
 * words gives the built-in "s", "m", "h", "d" or "w"; any other table number gives null. The
 * pointer is valid until the next SetLanguage or InitLangFile. */
const HorivoWideChar* GetUnitWord(std::uint32_t table, std::uint32_t number) noexcept;

/* ---- Time zones and local times ------------------------------------------------------------ */

/* The services of this section are new in version 1.1. */

/** Number of zones in HORIVO_TIME_ZONES. */
inline constexpr std::uint32_t kTimeZoneCount = 141;

/** Windows' record of each zone in HORIVO_TIME_ZONES. A record keeps its address as long as the
 * table lives, so that city records may point to it. One thread at a time. */
class TimeZoneTable {
public:
    TimeZoneTable() noexcept = default;
    TimeZoneTable(const TimeZoneTable&) = delete; /**< city records point into this table */
    TimeZoneTable& operator=(const TimeZoneTable&) = delete;

    /** The first call reads all zones from Windows; later calls do nothing. The first call lasts
     * some milliseconds, on some systems most of a second. Find calls Prepare when the zones have
     * not been read; a host may call Prepare on another thread before the first Find. */
    void Prepare() noexcept;

    /** The record of zone `id`; null for 0, for a number that HORIVO_TIME_ZONES does not have and
     * for a zone that this Windows lacks. */
    const _TIME_DYNAMIC_ZONE_INFORMATION* Find(std::uint32_t id) noexcept;

    /** Whether `zone` is one of this table's records. */
    bool Owns(const _TIME_DYNAMIC_ZONE_INFORMATION* zone) const noexcept;

private:
    static constexpr std::size_t kRecordBytes = 432; /* size of a DYNAMIC_TIME_ZONE_INFORMATION */
    static constexpr std::size_t kTableBytes = kTimeZoneCount * kRecordBytes;

    std::array<const _TIME_DYNAMIC_ZONE_INFORMATION*, kTimeZoneCount> found_ = {};
    /* Memory of the records, as bytes because their type is declared in windows.h. */
    alignas(4) std::array<std::byte, kTableBytes> records_ = {};
    bool prepared_ = false;
};

/** Keeps the rules of time zones by year. Windows reads rules from the registry, which is too slow
 * for a clock that shows many cities, so this cache keeps the rules that Windows returned last. It
 * has room for every zone in two years. When Windows changes the rules of a zone in the cache, the
 * program uses the new rules only after a restart. One thread at a time. */
class ZoneRuleCache {
public:
    /** Bias and daylight saving of `zone` in `year`. They are Windows' rules of that year for the
     * record's key name. When Windows does not know the name, or DynamicDaylightTimeDisabled is
     * set, they are the record's own bias and dates in every year.
     * @return valid until the next call */
    const _TIME_ZONE_INFORMATION& ForYear(const _TIME_DYNAMIC_ZONE_INFORMATION& zone,
                                          std::uint16_t year) noexcept;

private:
    struct Entry;
    /* A world clock asks for the rules of every zone each minute. At New Year it asks for the rules
     * of two years. */
    static constexpr std::size_t kCapacity = std::size_t{2} * kTimeZoneCount;
    static constexpr std::size_t kEntryBytes = 608; /* size of an Entry */

    Entry& At(std::size_t index) noexcept;

    /* Memory of the entries, as bytes because their members are declared in windows.h. */
    alignas(4) std::array<std::byte, kCapacity * kEntryBytes> entries_;
    std::size_t used_ = 0;
    std::size_t next_ = 0; /* the next entry to write; the oldest one when all are used */
};

/** Converts a UTC instant to the local time of `zone`, with the daylight saving of the local year.
 * Looks rules up in `rules` and keeps them there for later calls.
 * @return false when Windows rejects the zone or the instant; `local` is then unchanged */
bool UtcToZoneTime(const _SYSTEMTIME& utc, const _TIME_DYNAMIC_ZONE_INFORMATION& zone,
                   ZoneRuleCache& rules, _SYSTEMTIME& local) noexcept;

/** Size of the buffer for a text of FormatShortTime, in characters, terminator included. */
inline constexpr std::int32_t kTimeTextChars = 64;

/** Text that is shown in place of a time that cannot be formatted: "Error!". */
inline constexpr HorivoWideChar kTimeErrorText[] = {'E', 'r', 'r', 'o', 'r', '!', 0};

/** Writes `time` in the user's time format without seconds; writes kTimeErrorText when Windows
 * cannot format the time. */
void FormatShortTime(const _SYSTEMTIME& time, HorivoWideChar (&text)[kTimeTextChars]) noexcept;

/* ---- Administrative switches --------------------------------------------------------------- */

/** REG_DWORD values under HKEY_LOCAL_MACHINE "Software\Zelmo\Horivo" (64-bit view). A value that
 * exists, is 4 bytes long and non-zero sets its bit. */
inline constexpr std::uint32_t kNoUpdates = 0x01;     /**< "no_updates": no update checks */
inline constexpr std::uint32_t kNoNews = 0x02;        /**< "no_news": no news */
inline constexpr std::uint32_t kNoPhotos = 0x04;      /**< "no_photos": no city photos */
inline constexpr std::uint32_t kNoPreferences = 0x08; /**< "no_preferences": settings of the user
                                                         "default" in the program's directory */
inline constexpr std::uint32_t kNoTimeTable = 0x10;   /**< "no_time_table": no time table */
inline constexpr std::uint32_t kLogging = 0x20;       /**< "logging": the log is written */

/** The switches that ReadAdminFlags read last; 0 before its first call. */
extern std::atomic<std::uint32_t> adminFlags;

/** Reads the switches from the registry into `adminFlags`; 0 when the key cannot be opened. */
void ReadAdminFlags() noexcept;

/** Whether none of `bits` is set. */
bool IsFeatureEnabled(std::uint32_t bits) noexcept;

/* ---- Diagnostic log ------------------------------------------------------------------------ */

/** Creates the mutex "horivo_log_mutex", or opens it when another program has created it. WriteLog
 * waits for it, so that lines of several threads and programs do not mix. A host calls this once at
 * its start; the DLL never does. Returns whether the module has the mutex. */
bool CreateLogMutex() noexcept;

/** Closes the mutex. No thread may be writing to the log at that time. */
void CloseLogMutex() noexcept;

/** Appends a line to "horivo.log" in the user's temporary directory when logging is on: local time,
 * process, thread, program, message. Waits for the mutex without time limit. When the file cannot
 * be opened, the line is dropped without an error.
 * @param message  any bytes, usually text in the ANSI code page, written unchanged; null writes
 *                 nothing */
void WriteLog(const char* message) noexcept;

/** Converts `message` to the system's ANSI code page, at most 2047 bytes of whole characters, and
 * writes it like WriteLog. */
void WriteLogW(const HorivoWideChar* message) noexcept;

#endif /* HORIVO_HOST_H */
