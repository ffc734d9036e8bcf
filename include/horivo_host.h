/** @file
 * Services that the map library shares with its host: language files, unit words, the texts of
 * dialogs and menus, time zones and local times, administrative switches, the diagnostic log.
 *
 * They are a static library, horivo_host; the DLL exports none of them. Each module that links it
 * has records of its own; the DLL takes only the switches and the time zones along and reads the
 * switches with its settings. The one text that the map shows in the user's language comes through
 * SetLocalString.
 *
 * For C++20. The header pulls in no windows.h; handles are declared under their usual names and
 * agree with it in any order of inclusion.
 *
 * Life of the services in a host:
 *   StartHostServices   first; the host's own SetDirectory, SetBaseName, SetExtension before or
 *                       after it
 *   CreateLogMutex      before the first thread writes to the log
 *   ReadAdminFlags      at the start, and whenever the switches may have changed
 *   SetLanguage         when the user chooses a language; what is open is then localized again
 *
 * Threads: the log and the switches belong to any thread, a TimeZoneTable and a ZoneRuleCache to
 * one thread at a time, everything else to the host's user interface thread (SetLanguage sets the
 * locale of the thread that calls it). No function throws. Text is UTF-16 unless it says otherwise;
 * pointers to text may be null where that is said.
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
inline constexpr std::uint32_t kUnitRanges = 100; /**< of one table */
inline constexpr std::uint32_t kUnitChars = 1024; /**< of one table's words, terminators included */

/** A run of numbers modulo 100 that share a word; both ends belong to it. */
struct UnitRange {
    std::uint8_t low;  /**< 0 to 99 */
    std::uint8_t high; /**< 0 to 99 */
};

/** The language state of a module. All texts are terminated. */
struct CLangFile {
    std::uint32_t langId; /**< Windows locale identifier; 0x400 (user default) at first */
    HorivoWideChar extension[kLangExtensionChars + 1]; /**< of language files; ".ini" at first */
    HorivoWideChar baseName[kLangBaseNameChars + 1];   /**< at first the program's name without its
                                                          extension, at most 63 characters */
    HorivoWideChar directory[kLangPathChars + 1];    /**< of language files; the program's at first,
                                                        with its trailing backslash */
    HorivoWideChar langFilePath[kLangPathChars + 1]; /**< of the current language; empty: none */
    HorivoWideChar fallbackFilePath[kLangPathChars + 1]; /**< of "en"; empty: none */
    HorivoWideChar langAbbrev[kLangAbbrevChars + 1]; /**< lower case; the user default's at first */
    HINSTANCE__* resourceModule;                     /**< string resources; null: none */
    std::uint32_t
        unitStringIds[kUnitTables];       /**< resource identifier of each unit table; 0: unused */
    std::uint16_t unitCount[kUnitTables]; /**< ranges that are in use */
    UnitRange unitRanges[kUnitTables][kUnitRanges]; /**< the first unitCount of each */
    const HorivoWideChar* unitTexts[kUnitTables]
                                   [kUnitRanges]; /**< each range's word in unitBuffer; null
                                                       (a fault in its group): the default word */
    HorivoWideChar unitBuffer[kUnitTables]
                             [kUnitChars]; /**< the default word, then the ranges' words */

    CLangFile() = default;
    CLangFile(const CLangFile&) = delete; /**< unitTexts points into the record */
    CLangFile& operator=(const CLangFile&) = delete;
    ~CLangFile() = default;
};

/** This module's record. It is in its initial state from the first use on; the operations below
 * change it. */
const CLangFile& LangFile() noexcept;

/** Day names, 0 = Sunday to 6 = Saturday, and month names, 0 = January, of the language that
 * SetLanguage chose, at most 16 characters each; empty before the first SetLanguage. */
/** @{ */
extern HorivoWideChar dayNames[7][24];
extern HorivoWideChar monthNames[12][24];
/** @} */

/* ---- Choosing the language ----------------------------------------------------------------- */

/** Loads "res_en.dll" from the program's directory as a data file, registers it with the unit
 * tables 257 to 261 and selects the language "en". Only the first call does anything.
 * @return whether the module is there; without it strings come from the language files alone, and
 *         units have no words, because SetLanguage reads unit tables only with a module. */
bool StartHostServices() noexcept;

/** Puts the record into its initial state. It starts there; a host need not call this. */
void InitLangFile() noexcept;

/** Where language files lie (a full path; the trailing backslash may be missing), what their names
 * begin with, and what they end with (dot included). Null or empty clears the field; a longer text
 * is cut. Each then looks for the files of the current language and of "en" anew.
 * @return whether the file of "en" exists. */
/** @{ */
bool SetDirectory(const HorivoWideChar* path) noexcept;
bool SetBaseName(const HorivoWideChar* name) noexcept;
bool SetExtension(const HorivoWideChar* extension) noexcept;
/** @} */

/** Registers the host's string resources and the string identifiers of the five unit tables (`ids`
 * null: none). The module must stay loaded. Takes effect for unit words at the next SetLanguage. */
void SetResources(HINSTANCE__* module, const std::uint32_t* ids) noexcept;

/** Makes the language with this Windows abbreviation ("DEU", in any case) the current one: locale
 * of the calling thread, day and month names, language file and, when resources are registered,
 * unit words. Null or empty: the user's own. An abbreviation that no installed locale has keeps the
 * user's locale but still finds its language file by its first two letters ("en"). Menus and
 * dialogs that are open keep their texts. */
void SetLanguage(const HorivoWideChar* abbrev) noexcept;

/** The current Windows locale identifier. */
std::uint32_t GetLanguageId() noexcept;

/** The installed locale with this abbreviation, in any case; 0x400 when there is none. */
std::uint32_t FindLocaleForAbbrev(const HorivoWideChar* abbrev) noexcept;

/** Forms the path `directory\baseName_xx.ini` of a language and says whether that file exists.
 * abbrev: Windows abbreviation, its first two letters count; null: the current language; empty: the
 * ISO 639 code of the current locale. outPath: room for kLangPathChars + 1 characters; gets the
 * path, found or not, and an empty text when there is no base name or the path would be longer.
 * Null is tolerated and fails. */
bool FindLanguageFile(const HorivoWideChar* abbrev, HorivoWideChar* outPath) noexcept;

/* ---- Texts --------------------------------------------------------------------------------- */

/** Places the text `id` in `buffer`: from `section` of the language file (null: "StringTable"),
 * with its escapes resolved; else from the string resources of `module` (null: none); else empty. A
 * longer text is cut. size: characters in `buffer`, terminator included.
 * @return the length; 0 without a buffer or with a size below 1. */
std::int32_t LoadLocalString(HINSTANCE__* module, std::uint32_t id, HorivoWideChar* buffer,
                             std::int32_t size, const HorivoWideChar* section = nullptr) noexcept;

/** Gives an open dialog the texts of the section `dialogName` (at most 62 characters): "Caption"
 * its title, a control's identifier the text of that "Button" or "Static", however deep it lies.
 * Identifiers below 1 and 65535 (what -1 becomes in a 16-bit template) are left alone. Texts that
 * the language file lacks come from the file of "en"; what neither has stays as it is.
 * @return false when there is no such window, no name or no language file. */
bool LocalizeDialog(HWND__* dialog, const HorivoWideChar* dialogName) noexcept;

/** Gives a menu and its submenus the texts of `section`, at most 255 characters each, by command
 * identifier; an item that opens a submenu by its present text: ASCII letters, digits, "-", "_" and
 * "." of it, blanks as "_", nothing else. That text is replaced, too: start each language from a
 * freshly loaded menu. "\t" means nothing here; a tab in the file is a tab.
 * @return whether an item was given a text. */
bool LocalizeMenu(HMENU__* menu, const HorivoWideChar* section) noexcept;

/** Shows a message box with an OK button; text (at most 128 characters) and caption (at most 32) as
 * by LoadLocalString. Returns the result of MessageBoxW. */
std::int32_t LocalMessageBox(HWND__* owner, HINSTANCE__* module, std::uint32_t textId,
                             std::uint32_t captionId,
                             const HorivoWideChar* section = nullptr) noexcept;

/** The word for `number` units of seconds, minutes, hours, days or weeks (table 0 to 4), by the
 * last two digits: "days" for 102. Null for any other table. Valid until the next SetLanguage. */
const HorivoWideChar* GetUnitWord(std::uint32_t table, std::uint32_t number) noexcept;

/* ---- Time zones and local times ------------------------------------------------------------ */

/** Zones that HORIVO_TIME_ZONES numbers. */
inline constexpr std::uint32_t kTimeZoneCount = 141;

/** Windows' record of each zone that HORIVO_TIME_ZONES numbers. Records stay where they are for the
 * life of the table, so that city records may point at them. One thread at a time. */
class TimeZoneTable {
public:
    TimeZoneTable() noexcept = default;
    TimeZoneTable(const TimeZoneTable&) = delete; /**< city records point into the table */
    TimeZoneTable& operator=(const TimeZoneTable&) = delete;

    /** Asks Windows for all its zones, once. Takes some milliseconds, on some systems a good part
     * of a second: a host may call it on a thread of its own before the first Find, which does it
     * otherwise. */
    void Prepare() noexcept;

    /** The record of zone `id`; null for 0, for a number that HORIVO_TIME_ZONES does not have and
     * for a zone that this Windows lacks. */
    const _TIME_DYNAMIC_ZONE_INFORMATION* Find(std::uint32_t id) noexcept;

    /** Whether `zone` is one of this table's records. */
    bool Owns(const _TIME_DYNAMIC_ZONE_INFORMATION* zone) const noexcept;

private:
    static constexpr std::size_t kRecordBytes = 432; /* of a DYNAMIC_TIME_ZONE_INFORMATION */
    static constexpr std::size_t kTableBytes = kTimeZoneCount * kRecordBytes;

    std::array<const _TIME_DYNAMIC_ZONE_INFORMATION*, kTimeZoneCount> found_ = {};
    /* Room for the records; as bytes, because their type is in windows.h. */
    alignas(4) std::array<std::byte, kTableBytes> records_ = {};
    bool prepared_ = false;
};

/** The rules of time zones by year. They come from the registry, which is too slow for a clock that
 * asks for many cities again and again, so the latest answers are kept, enough for every zone
 * in two years; a change of the rules in Windows shows after a restart. One thread at a time. */
class ZoneRuleCache {
public:
    /** Bias and daylight saving of `zone` in `year`: the rules that Windows has for that year by
     * the record's key name. A record without a name that Windows knows, or with
     * DynamicDaylightTimeDisabled, counts with its own bias and dates in every year.
     * @return valid until the next call */
    const _TIME_ZONE_INFORMATION& ForYear(const _TIME_DYNAMIC_ZONE_INFORMATION& zone,
                                          std::uint16_t year) noexcept;

private:
    struct Entry;
    /* A clock of the world asks for every zone each minute, on New Year's Eve for two years. */
    static constexpr std::size_t kCapacity = std::size_t{2} * kTimeZoneCount;
    static constexpr std::size_t kEntryBytes = 608; /* of an Entry */

    Entry& At(std::size_t index) noexcept;

    /* Room for the entries; as bytes, because what they hold is in windows.h. */
    alignas(4) std::array<std::byte, kCapacity * kEntryBytes> entries_;
    std::size_t used_ = 0;
    std::size_t next_ = 0; /* the entry that goes first when all are used */
};

/** Converts a UTC instant to the local time of `zone`, with the daylight saving of the local year.
 * `rules` keeps what was looked up for the next call.
 * @return false when the record or the instant makes no time; `local` is then left alone */
bool UtcToZoneTime(const _SYSTEMTIME& utc, const _TIME_DYNAMIC_ZONE_INFORMATION& zone,
                   ZoneRuleCache& rules, _SYSTEMTIME& local) noexcept;

/** Room that every text of FormatShortTime fits into, characters, terminator included. */
inline constexpr std::int32_t kTimeTextChars = 64;

/** What stands for a time that cannot be shown: "Error!". */
inline constexpr HorivoWideChar kTimeErrorText[] = {'E', 'r', 'r', 'o', 'r', '!', 0};

/** Writes `time` as the user's short time without seconds; kTimeErrorText when Windows refuses. */
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

/** The mask as last read, 0 before. Written by the thread that calls ReadAdminFlags. */
extern std::atomic<std::uint32_t> adminFlags;

/** Reads the switches from the registry; 0 when the key cannot be opened. */
void ReadAdminFlags() noexcept;

/** Whether none of `bits` is set. */
bool IsFeatureEnabled(std::uint32_t bits) noexcept;

/* ---- Diagnostic log ------------------------------------------------------------------------ */

/** Creates the mutex "horivo_log_mutex", or opens the one of a program that runs already, for the
 * writers of this module: with it lines of several threads and processes stay whole. A host calls
 * it once at its start; the DLL never does. Returns whether the module holds the mutex. */
bool CreateLogMutex() noexcept;

/** Gives the mutex back. No thread may be writing any more. */
void CloseLogMutex() noexcept;

/** Appends a line to "horivo.log" in the user's temporary directory when logging is on: local time,
 * process, thread, program, message. Waits for the mutex without time limit. Null writes nothing; a
 * file that cannot be opened drops the line silently.
 * message: any bytes, the ANSI code page by custom; written as it is. */
void WriteLog(const char* message) noexcept;

/** The same in the system's ANSI code page, cut at a whole character to at most 2047 bytes. */
void WriteLogW(const HorivoWideChar* message) noexcept;

#endif /* HORIVO_HOST_H */
