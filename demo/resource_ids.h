#pragma once
// Identifiers of the sample host's texts, menu, dialogs and accelerators in res_en.dll. They are
// also the keys of the language files in demo/languages. The resource compiler reads this file,
// too, so it contains only #define lines.

// Sections of the language files. The host passes these names to LocalizeMenu and LocalizeDialog.
#define MENU_SECTION L"Menu"
#define ABOUT_SECTION L"About"
#define KEYS_SECTION L"Keys"

// ---- String table. The host replaces "%1" and "%2" by plain text.

#define IDS_ADD_PHOTO 2  // HORIVO_TEXT_ADD_PHOTO: a hint that the map shows
#define IDS_TITLE 10     // title of windows and message boxes

#define IDS_COLUMN_CITY 20
#define IDS_COLUMN_TIME 21
#define IDS_COLUMN_DATE 22
#define IDS_COLUMN_OFFSET 23
#define IDS_COLUMN_COUNTRY 24

#define IDS_FILTER_LABEL 31  // also the name of the search field for screen readers
#define IDS_LIST_LABEL 32    // the name of the list for screen readers
#define IDS_NOTHING_FOUND 33

#define IDS_STATUS_CITIES 40     // %1 number of cities
#define IDS_STATUS_CITIES_OF 41  // %1 cities found, %2 all cities
#define IDS_STATUS_UTC 44        // %1 time of day
// Difference between the selected city's local time and that of this computer: %1 first number with
// its sign, %2 the text behind it ("hours", "hours 30 minutes").
#define IDS_STATUS_DIFFERENCE 45

// Message texts, at most 128 characters.
// %1 in IDS_NO_PICTURE, IDS_MAP_PICTURE_BAD and IDS_MAP_PICTURE_UNFIT: the library's data folder.
#define IDS_NO_PICTURE 62
#define IDS_NO_CITIES 63
#define IDS_FOLDER_FAILED 64
#define IDS_MAP_WINDOW_REFUSED 65
#define IDS_MAP_PICTURE_BAD 66      // HORIVO_BAD_PICTURE
#define IDS_MAP_PICTURE_UNFIT 67    // HORIVO_UNFIT_PICTURE
#define IDS_MAP_COPY_FAILED 68      // HORIVO_COPY_FAILED
#define IDS_MAP_CLASS_FAILED 69     // HORIVO_CLASS_FAILED
#define IDS_MAP_NO_FORMAT 70        // HORIVO_NO_PIXEL_FORMAT
#define IDS_MAP_FORMAT_REFUSED 71   // HORIVO_PIXEL_FORMAT_REFUSED
#define IDS_MAP_CONTEXT_FAILED 72   // HORIVO_CONTEXT_FAILED
#define IDS_MAP_UNKNOWN_FAILURE 73  // any other code

// Unit words. StartHostServices registers these identifiers.
#define IDS_UNIT_SECONDS 257
#define IDS_UNIT_MINUTES 258
#define IDS_UNIT_HOURS 259
#define IDS_UNIT_DAYS 260
#define IDS_UNIT_WEEKS 261

// ---- Icon of the program.

#define IDI_PROGRAM 1

// ---- Menu and accelerators.

#define IDR_MAIN_MENU 100
#define IDR_ACCELERATORS 101

#define IDM_NEW_WINDOW 40001
#define IDM_CLOSE_WINDOW 40002
#define IDM_OPEN_PHOTO_FOLDER 40003
#define IDM_EXIT 40004
#define IDM_COPY_TIME 40005
#define IDM_ALWAYS_ON_TOP 40006

#define IDM_FLY_TO_CITY 40010
#define IDM_HOME_VIEW 40011
#define IDM_ZOOM_IN 40012
#define IDM_ZOOM_OUT 40013
#define IDM_FINER_DETAIL 40014
#define IDM_COARSER_DETAIL 40015
#define IDM_FRAME_RATE 40016
#define IDM_INFORMATION 40017
#define IDM_SEARCH 40018  // puts the focus into the search field
#define IDM_REPAIR_PICTURE 40019

#define IDM_LANGUAGE_ENGLISH 40020
#define IDM_LANGUAGE_GERMAN 40021
#define IDM_LANGUAGE_SPANISH 40022
#define IDM_LANGUAGE_FRENCH 40023
#define IDM_LANGUAGE_RUSSIAN 40024
#define IDM_LANGUAGE_JAPANESE 40025
#define IDM_LANGUAGE_WINDOWS 40026

#define IDM_KEYS 40030
#define IDM_ABOUT 40031

// ---- Dialogs.

#define IDD_ABOUT 200
#define IDD_KEYS 201

#define IDC_ABOUT_NAME 1001
#define IDC_ABOUT_PURPOSE 1002
#define IDC_ABOUT_USE 1003
#define IDC_ABOUT_LICENCE 1004

// In the keys dialog: the first heading, and the first text of the rows. Each row has two texts:
// the key and what it does.
#define IDC_KEY_HEADINGS 1100
#define IDC_KEYS 1110
