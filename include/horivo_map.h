/** @file
 * Horivo Map: an interactive, lit globe of the Earth in a child window of the host.
 *
 * The only header that a host needs, from C or C++. It does not include windows.h: it declares the
 * handle types under their usual names and may be included before or after windows.h.
 *
 * Order of the calls in a host:
 *   InitMap           once, before anything else
 *   SetLocalString    any time, normally before the first window
 *   InstallMap        only after a new "map.jpg" has been put into the data folder
 *   CreateMapWindow   for each map view; destroy it with DestroyWindow or with its parent
 *   FreeMap           last, when no map window is left
 *
 * Threads: call every function from the one thread that runs the message loop of the windows. The
 * library starts short-lived worker threads that decode and split the map picture. Each of them
 * keeps the library loaded until it has ended, so FreeLibrary right after FreeMap is safe.
 *
 * No function throws. Text is UTF-16.
 */
#ifndef HORIVO_MAP_H
#define HORIVO_MAP_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
#include <type_traits>
#endif

/** A UTF-16 character; on Windows wchar_t. */
#ifdef _WIN32
typedef wchar_t HorivoWideChar;
#elif defined(__cplusplus)
typedef char16_t HorivoWideChar;
#else
typedef uint_least16_t HorivoWideChar;
#endif

/* Types of windows.h that this header refers to. */
struct HWND__;
struct _TIME_DYNAMIC_ZONE_INFORMATION;

/* ---- Version ------------------------------------------------------------------------------- */

/** Version of the library. Only these lines define the version: the build reads them to write the
 * DLL's version resource and the package's name. For a new major version, hosts must be changed. */
/** @{ */
#define HORIVO_MAP_VERSION_MAJOR 1
#define HORIVO_MAP_VERSION_MINOR 1
#define HORIVO_MAP_VERSION_PATCH 0
/** @} */

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Result codes -------------------------------------------------------------------------- */

/** Success. */
#define HORIVO_OK 0u
/** The map picture cannot be read as a JPEG, its pixels would need more than a third of the
 * physical memory, or no memory was left. */
#define HORIVO_BAD_PICTURE 0x20000003u
/** The map picture is smaller than 16 x 16 pixels or has neither 3 nor 4 colour components. */
#define HORIVO_UNFIT_PICTURE 0x20000004u
/** Copying "map.jpg" to "map0.jpg" or back failed, or there is no data folder, for example because
 * InitMap has not been called; GetLastSysError says why. */
#define HORIVO_COPY_FAILED 0x20000005u
/** The window class could not be registered, for example because an earlier FreeMap came while
 * there was a map window, or InstallMap could not create its hidden window, or no memory was left;
 * GetLastSysError says why. */
#define HORIVO_CLASS_FAILED 0x20000006u
/** There is no OpenGL pixel format for the window; GetLastSysError says why. */
#define HORIVO_NO_PIXEL_FORMAT 0x20000007u
/** Windows refused to set the pixel format; GetLastSysError says why. */
#define HORIVO_PIXEL_FORMAT_REFUSED 0x20000008u
/** The OpenGL context could not be created or made current; GetLastSysError says why. */
#define HORIVO_CONTEXT_FAILED 0x20000009u

/* ---- Window messages ----------------------------------------------------------------------- */

/** From the map to its parent: the user clicked a city.
 * wParam: index of the city in the host's table; lParam: address of its CityRecord.
 * From the host to the map: show this city (fly there, offer its photos).
 * wParam: ignored; lParam: address of a CityRecord. The library looks its names up in the table
 * given to InitMap. Nothing happens for 0, for an unknown city and for a city without position. */
#define HORIVO_MSG_CITY 0x80C8u
/** From the map to the host's hidden main window (class HORIVO_HOST_WINDOW_CLASS), by SendMessage:
 * asks whether the photos of a place may be shown.
 * wParam: index of the city; when no city is under the pointer, the negated index of the nearest
 * city, whose country's photos are meant. lParam: the map window.
 * Return 1 to allow the photos; any other value refuses them. When the host has no such window, no
 * photos are shown. */
#define HORIVO_MSG_MAY_SHOW_PHOTOS 0x80D2u
/** From the host to the map: photos of a city have changed on disk.
 * wParam: the city index of the HORIVO_MSG_MAY_SHOW_PHOTOS message, with its sign; lParam: number
 * of new photos, at least 1. */
#define HORIVO_MSG_PHOTOS_CHANGED 0x80D3u

/** Class name of the host's hidden main window. */
#define HORIVO_HOST_WINDOW_CLASS L"zhv_MainHidden"

/* ---- Local strings ------------------------------------------------------------------------- */

/** Identifier of the hint beside the add-photo button, the only text of SetLocalString that the map
 * uses. Until the host sets this text, the map shows no hint. */
#define HORIVO_TEXT_ADD_PHOTO 2

/* ---- Time zones ---------------------------------------------------------------------------- */

/** The time zones of Windows: the name of each registry key and the number that
 * CityRecord::timeZoneId uses for it. X(number, name) is expanded once for each zone; the name is a
 * narrow string literal, and `L##name` makes it wide. Numbers never change: zones that Windows adds
 * later are appended, so that later entries need not be in alphabetical order. The map shows no
 * time for a city whose zone this Windows does not have.
 */
/* clang-format off */
#define HORIVO_TIME_ZONES(X) \
    X(1, "AUS Central Standard Time") \
    X(2, "AUS Eastern Standard Time") \
    X(3, "Afghanistan Standard Time") \
    X(4, "Alaskan Standard Time") \
    X(5, "Aleutian Standard Time") \
    X(6, "Altai Standard Time") \
    X(7, "Arab Standard Time") \
    X(8, "Arabian Standard Time") \
    X(9, "Arabic Standard Time") \
    X(10, "Argentina Standard Time") \
    X(11, "Astrakhan Standard Time") \
    X(12, "Atlantic Standard Time") \
    X(13, "Aus Central W. Standard Time") \
    X(14, "Azerbaijan Standard Time") \
    X(15, "Azores Standard Time") \
    X(16, "Bahia Standard Time") \
    X(17, "Bangladesh Standard Time") \
    X(18, "Belarus Standard Time") \
    X(19, "Bougainville Standard Time") \
    X(20, "Canada Central Standard Time") \
    X(21, "Cape Verde Standard Time") \
    X(22, "Caucasus Standard Time") \
    X(23, "Cen. Australia Standard Time") \
    X(24, "Central America Standard Time") \
    X(25, "Central Asia Standard Time") \
    X(26, "Central Brazilian Standard Time") \
    X(27, "Central Europe Standard Time") \
    X(28, "Central European Standard Time") \
    X(29, "Central Pacific Standard Time") \
    X(30, "Central Standard Time") \
    X(31, "Central Standard Time (Mexico)") \
    X(32, "Chatham Islands Standard Time") \
    X(33, "China Standard Time") \
    X(34, "Cuba Standard Time") \
    X(35, "Dateline Standard Time") \
    X(36, "E. Africa Standard Time") \
    X(37, "E. Australia Standard Time") \
    X(38, "E. Europe Standard Time") \
    X(39, "E. South America Standard Time") \
    X(40, "Easter Island Standard Time") \
    X(41, "Eastern Standard Time") \
    X(42, "Eastern Standard Time (Mexico)") \
    X(43, "Egypt Standard Time") \
    X(44, "Ekaterinburg Standard Time") \
    X(45, "FLE Standard Time") \
    X(46, "Fiji Standard Time") \
    X(47, "GMT Standard Time") \
    X(48, "GTB Standard Time") \
    X(49, "Georgian Standard Time") \
    X(50, "Greenland Standard Time") \
    X(51, "Greenwich Standard Time") \
    X(52, "Haiti Standard Time") \
    X(53, "Hawaiian Standard Time") \
    X(54, "India Standard Time") \
    X(55, "Iran Standard Time") \
    X(56, "Israel Standard Time") \
    X(57, "Jordan Standard Time") \
    X(58, "Kaliningrad Standard Time") \
    X(59, "Kamchatka Standard Time") \
    X(60, "Korea Standard Time") \
    X(61, "Libya Standard Time") \
    X(62, "Line Islands Standard Time") \
    X(63, "Lord Howe Standard Time") \
    X(64, "Magadan Standard Time") \
    X(65, "Magallanes Standard Time") \
    X(66, "Marquesas Standard Time") \
    X(67, "Mauritius Standard Time") \
    X(68, "Mid-Atlantic Standard Time") \
    X(69, "Middle East Standard Time") \
    X(70, "Montevideo Standard Time") \
    X(71, "Morocco Standard Time") \
    X(72, "Mountain Standard Time") \
    X(73, "Mountain Standard Time (Mexico)") \
    X(74, "Myanmar Standard Time") \
    X(75, "N. Central Asia Standard Time") \
    X(76, "Namibia Standard Time") \
    X(77, "Nepal Standard Time") \
    X(78, "New Zealand Standard Time") \
    X(79, "Newfoundland Standard Time") \
    X(80, "Norfolk Standard Time") \
    X(81, "North Asia East Standard Time") \
    X(82, "North Asia Standard Time") \
    X(83, "North Korea Standard Time") \
    X(84, "Omsk Standard Time") \
    X(85, "Pacific SA Standard Time") \
    X(86, "Pacific Standard Time") \
    X(87, "Pacific Standard Time (Mexico)") \
    X(88, "Pakistan Standard Time") \
    X(89, "Paraguay Standard Time") \
    X(90, "Qyzylorda Standard Time") \
    X(91, "Romance Standard Time") \
    X(92, "Russia Time Zone 10") \
    X(93, "Russia Time Zone 11") \
    X(94, "Russia Time Zone 3") \
    X(95, "Russian Standard Time") \
    X(96, "SA Eastern Standard Time") \
    X(97, "SA Pacific Standard Time") \
    X(98, "SA Western Standard Time") \
    X(99, "SE Asia Standard Time") \
    X(100, "Saint Pierre Standard Time") \
    X(101, "Sakhalin Standard Time") \
    X(102, "Samoa Standard Time") \
    X(103, "Sao Tome Standard Time") \
    X(104, "Saratov Standard Time") \
    X(105, "Singapore Standard Time") \
    X(106, "South Africa Standard Time") \
    X(107, "South Sudan Standard Time") \
    X(108, "Sri Lanka Standard Time") \
    X(109, "Sudan Standard Time") \
    X(110, "Syria Standard Time") \
    X(111, "Taipei Standard Time") \
    X(112, "Tasmania Standard Time") \
    X(113, "Tocantins Standard Time") \
    X(114, "Tokyo Standard Time") \
    X(115, "Tomsk Standard Time") \
    X(116, "Tonga Standard Time") \
    X(117, "Transbaikal Standard Time") \
    X(118, "Turkey Standard Time") \
    X(119, "Turks And Caicos Standard Time") \
    X(120, "US Eastern Standard Time") \
    X(121, "US Mountain Standard Time") \
    X(122, "UTC") \
    X(123, "UTC+12") \
    X(124, "UTC+13") \
    X(125, "UTC-02") \
    X(126, "UTC-08") \
    X(127, "UTC-09") \
    X(128, "UTC-11") \
    X(129, "Ulaanbaatar Standard Time") \
    X(130, "Venezuela Standard Time") \
    X(131, "Vladivostok Standard Time") \
    X(132, "Volgograd Standard Time") \
    X(133, "W. Australia Standard Time") \
    X(134, "W. Central Africa Standard Time") \
    X(135, "W. Europe Standard Time") \
    X(136, "W. Mongolia Standard Time") \
    X(137, "West Asia Standard Time") \
    X(138, "West Bank Standard Time") \
    X(139, "West Pacific Standard Time") \
    X(140, "Yakutsk Standard Time") \
    X(141, "Yukon Standard Time")
/* clang-format on */

/* ---- The host's city table ----------------------------------------------------------------- */

/** One city of the host's table: 376 bytes, little-endian, records packed back to back.
 *
 * The host owns the array and keeps it valid from InitMap until FreeMap has returned. The library
 * reads the names, the position and the time-zone fields. It writes only timeZone, markerPoint,
 * windowPoint, distanceSq, inRange and nearest.
 *
 * A city has a position only when latitude and longitude are both non-zero (a NaN counts as
 * non-zero): a city exactly on the equator or on the prime meridian gets no marker and no label. */
typedef struct CityRecord {
    HorivoWideChar cityName[64]; /**< name, NUL-terminated, at most 63 characters */
    HorivoWideChar
        countryName[64]; /**< country, NUL-terminated; photos are found by country and name */
    unsigned char hostBytes[8]; /**< for the host's own use; the library does not access them */
    double latitude;            /**< degrees, north positive; 0 means no position */
    double longitude;           /**< degrees, east positive; 0 means no position */
    uint32_t timeZoneId;        /**< HORIVO_TIME_ZONES number, 0 unknown; used while timeZone
                                   is null */
    uint32_t padding;           /**< not read, not written */
    const struct _TIME_DYNAMIC_ZONE_INFORMATION*
        timeZone;          /**< DYNAMIC_TIME_ZONE_INFORMATION of the city, or null. Windows' rules
                              of the year apply when Windows knows its TimeZoneKeyName and
                              DynamicDaylightTimeDisabled is not set; otherwise its own bias and
                              dates apply. While timeZone is null, the library looks timeZoneId
                              up and writes the address of its own record here. That record lives
                              until the library is unloaded. FreeMap sets these addresses to null
                              again, but only in the table of the last InitMap. In records of
                              earlier tables, write null yourself before you pass them to the
                              library after it was unloaded. */
    double markerPoint[4]; /**< out: x, y, z, 1; the globe has the radius 3, the point 3.0003 */
    double windowPoint[4]; /**< out: last projection of the marker, window pixels, y upward */
    double distanceSq;     /**< out: squared distance to the place last pointed at, clicked or
                              shown by HORIVO_MSG_CITY, where the radius of the globe is 3. When a
                              country is chosen, its photos are sorted by this value, those of the
                              nearest city first */
    unsigned char inRange; /**< out: 1 while the city is at most 0.02 (42 km) from the place
                              pointed at */
    unsigned char nearest; /**< out: 1 for the one city nearest to the place pointed at */
    unsigned char tail[6]; /**< not read, not written */
} CityRecord;

#ifdef __cplusplus
static_assert(sizeof(CityRecord) == 376 && offsetof(CityRecord, countryName) == 128 &&
                  offsetof(CityRecord, latitude) == 264 &&
                  offsetof(CityRecord, timeZoneId) == 280 &&
                  offsetof(CityRecord, timeZone) == 288 &&
                  offsetof(CityRecord, markerPoint) == 296 &&
                  offsetof(CityRecord, windowPoint) == 328 &&
                  offsetof(CityRecord, distanceSq) == 360 && offsetof(CityRecord, inRange) == 368 &&
                  offsetof(CityRecord, nearest) == 369,
              "the host fills this memory: its layout is part of the interface");
static_assert(std::is_trivially_copyable<CityRecord>::value, "hosts copy city records as bytes");
#elif defined(__STDC_VERSION__) && __STDC_VERSION__ >= 201112L
_Static_assert(sizeof(CityRecord) == 376 && offsetof(CityRecord, latitude) == 264 &&
                   offsetof(CityRecord, timeZone) == 288 &&
                   offsetof(CityRecord, markerPoint) == 296 &&
                   offsetof(CityRecord, distanceSq) == 360 && offsetof(CityRecord, nearest) == 369,
               "the host fills this memory: its layout is part of the interface");
#endif

/* ---- Functions ----------------------------------------------------------------------------- */

/** Linkage of the functions: a host imports them from the DLL; the build of the DLL needs no
 * attribute. */
#ifdef HORIVO_MAP_BUILD
#define HORIVO_API
#elif defined(_WIN32)
#define HORIVO_API __declspec(dllimport)
#else
#define HORIVO_API
#endif

/** Stores the address of the host's city table and prepares the library: finds the data folder
 * (`Zelmo\Horivo` in the common application data folder), creates it when it is missing, and
 * registers the window class. A second call replaces the table, although it returns
 * HORIVO_CLASS_FAILED with the system error ERROR_CLASS_ALREADY_EXISTS, because the class is
 * registered already. Only a call that runs out of memory (ERROR_NOT_ENOUGH_MEMORY) keeps the table
 * of the previous call.
 * @param cities     the host's array; may be null
 * @param cityCount  number of records; below 0 counts as none
 * @return HORIVO_OK or HORIVO_CLASS_FAILED */
HORIVO_API uint32_t InitMap(CityRecord* cities, int32_t cityCount);

/** Sets or replaces a localized text.
 * @param id    HORIVO_TEXT_ADD_PHOTO; the map uses no other text
 * @param text  the library copies this text; null changes nothing: an earlier text stays */
HORIVO_API void SetLocalString(int32_t id, const HorivoWideChar* text);

/** Creates a visible map window inside `parent`.
 * @param parent         gets HORIVO_MSG_CITY; when `parent` is destroyed, so is the map window
 * @param x,y            place in the client area of `parent`, pixels
 * @param width,height   pixels
 * @param[out] status    HORIVO_OK or one of the three OpenGL set-up codes; null is tolerated
 * @return the window; null when it could not be created. *status then holds the OpenGL set-up code,
 * or HORIVO_OK when Windows itself refused the window, for example because InitMap has not been
 * called or `parent` is no window, or when no memory was left (see GetLastSysError) */
HORIVO_API struct HWND__* CreateMapWindow(struct HWND__* parent, int32_t x, int32_t y,
                                          int32_t width, int32_t height, uint32_t* status);

/** Checks a newly installed "map.jpg" in the data folder and keeps an unchanged copy of it as
 * "map0.jpg", unless there is one; when "map.jpg" is bad, restores it from an earlier copy. Then
 * tries in a hidden window whether this machine can make textures of the picture. When the picture
 * had to be shrunk, writes the smaller picture to "map.jpg" with JPEG quality 85. The call may last
 * some seconds.
 * @return HORIVO_OK or one of the result codes above */
HORIVO_API uint32_t InstallMap(void);

/** Releases the map picture, its mutex and the window class. Call it when no map window is left;
 * the city array must live until it returns. A further call before the next InitMap does not access
 * the city array and returns 0 when nothing is left to release; before version 1.1 it crashed.
 * @return non-zero on success */
HORIVO_API uint32_t FreeMap(void);

/** The Windows error code of the last failure whose description names this function. Success does
 * not reset it. */
HORIVO_API uint32_t GetLastSysError(void);

#ifdef __cplusplus
}
#endif

#endif /* HORIVO_MAP_H */
