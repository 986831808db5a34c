// Resource IDs of ToviraPuzzle: string table, menu commands, dialogs and their controls,
// icons, cursor, bitmap and sounds. Included by the .rc files and by the code.
#pragma once

// ---- String table. The Spanish text of English string N is string N + SpanishOffset.
#define SpanishOffset 100

#define IDS_SIZE_TITLE            1    // "Enter Puzzle Size in pixels"
#define IDS_WIDTH                 2
#define IDS_HEIGHT                3
#define IDS_WINDOW_TITLE          4
#define IDS_FILE_ERROR            5
#define IDS_PIECES_TITLE          6    // "Enter Number of Pieces"
#define IDS_UNIT_PIXELS           7
#define IDS_UNIT_PIECES           8
#define IDS_ADJUST_TO_IMAGE       9
#define IDS_UNABLE_TO_SAVE        10
#define IDS_VALUE_TOO_LARGE       11
#define IDS_INPUT_ERROR           12
#define IDS_ERROR_READING         13
#define IDS_LOW_RESOURCES         14
#define IDS_SYSTEM_ERROR          51
#define IDS_KEEP_RATIO            52
#define IDS_OTHER_VERSION         56
#define IDS_OVERWRITE             57
#define IDS_TRAY_TITLE            58
#define IDS_ADJUST_TO_SCREEN      59
#define IDS_PICTURE_UNREADABLE    60
#define IDS_NO_MAIN_WINDOW        61
#define IDS_PIECES_TOO_SMALL      62
#define IDS_PUZZLE_TOO_LARGE      63
#define IDS_PICTURE_TOO_LARGE     64
#define IDS_PICTURE_MISSING       65
#define IDS_LOOK_FOR_PICTURE      66
#define IDS_RESTORE_PUZZLE        67
#define IDS_RESTORE_TITLE         68
#define IDS_CANCEL                1016
#define IDS_VERSION               1025
#define IDS_ABOUT_TITLE           1026

// Menu texts: the text of menu item m is string m - MenuTextBase.
#define MenuTextBase              39500
#define IDS_SOUND_ON              518
#define IDS_SHOW_PATTERN          519
#define IDS_RECENT_PICTURES       538
#define IDS_RECENT_PUZZLES        539
#define IDS_RECENT_COLLECTIONS    540
#define IDS_MENU_COLLECTION       550
#define IDS_MENU_OPTIONS          551
#define IDS_SOUND_OFF             552
#define IDS_HIDE_PATTERN          553
#define IDS_MENU_HELP             599

// ---- Menu commands
#define IDM_OPEN_IMAGE            40001
#define IDM_OPEN_PUZZLE           40002
#define IDM_SAVE_PUZZLE           40003
#define IDM_MAKE                  40004
#define IDM_SET_PIECES            40005
#define IDM_SET_SIZE              40006
#define IDM_SHOW_HIDDEN           40007
#define IDM_SHUFFLE               40008
#define IDM_ADD_TRAY              40009
#define IDM_NEW_COLLECTION        40010
#define IDM_OPEN_COLLECTION       40011
#define IDM_SAVE_COLLECTION       40012
#define IDM_ADD_IMAGE             40013
#define IDM_REMOVE_IMAGE          40014
#define IDM_UPDATE_IMAGE          40015
#define IDM_PREVIOUS_PUZZLE       40016
#define IDM_NEXT_PUZZLE           40017
#define IDM_SOUND                 40018
#define IDM_PATTERN               40019
#define IDM_EXIT                  40020
#define IDM_SAVE_PUZZLE_AS        40021
#define IDM_SAVE_COLLECTION_AS    40022
#define IDM_CLOSE_COLLECTION      40023
#define IDM_SET_DEFAULT           40024
#define IDM_RESET_DEFAULT         40025
#define IDM_SIMPLE_INTERFACE      40026
#define IDM_ADVANCED_INTERFACE    40027
#define IDM_REACTIVATE_LANGUAGE   40029
#define IDM_HELP_TOPICS           40030
#define IDM_ABOUT                 40037
#define IDM_RECENT_PICTURES       40038
#define IDM_RECENT_PUZZLES        40039
#define IDM_RECENT_COLLECTIONS    40040
#define IDM_DRAW_OUTLINE          40041
#define IDM_DRAW_SET_OUTLINE      40042
#define IDM_FIRST                 40001
#define IDM_LAST                  40042

// Recent-file commands: first ID of each range of three.
#define IDM_RECENT_PICTURE_FIRST    3000
#define IDM_RECENT_PUZZLE_FIRST     3100
#define IDM_RECENT_COLLECTION_FIRST 3200

// ---- Toolbar buttons: button = menu command - ToolbarCommandShift.
#define ToolbarCommandShift       39001
#define IDT_OPEN_IMAGE            1000
#define IDT_OPEN_PUZZLE           1001
#define IDT_SAVE_PUZZLE           1002
#define IDT_MAKE                  1003
#define IDT_SET_PIECES            1004
#define IDT_SET_SIZE              1005
#define IDT_SHOW_HIDDEN           1006
#define IDT_SHUFFLE               1007
#define IDT_ADD_TRAY              1008
#define IDT_NEW_COLLECTION        1009
#define IDT_OPEN_COLLECTION       1010
#define IDT_SAVE_COLLECTION       1011
#define IDT_ADD_IMAGE             1012
#define IDT_REMOVE_IMAGE          1013
#define IDT_UPDATE_IMAGE          1014
#define IDT_PREVIOUS_PUZZLE       1015
#define IDT_NEXT_PUZZLE           1016
#define IDT_SOUND                 1017
#define IDT_PATTERN               1018
#define IDT_EXIT                  1019
#define IDT_HELP                  1020

// ---- Dialogs and their controls
#define IDC_SIZE_WIDTH_LABEL      1021
#define IDC_SIZE_HEIGHT_LABEL     1022
#define IDC_SIZE_FIRST_VALUE      1023
#define IDC_SIZE_SECOND_VALUE     1024
#define IDC_SIZE_OK               1025
#define IDC_SIZE_CANCEL           1026
#define IDC_SIZE_ADJUST_TO_IMAGE  1027
#define IDC_SIZE_FIRST_UNIT       1028
#define IDC_SIZE_SECOND_UNIT      1029
#define IDC_SIZE_KEEP_RATIO       1030
#define IDC_SIZE_ADJUST_TO_SCREEN 1031

#define IDC_LANGUAGE_OK           3001
#define IDC_LANGUAGE_SUPPRESS     3003
#define IDC_LANGUAGE_ENGLISH      3004
#define IDC_LANGUAGE_SPANISH      3005
#define IDC_ABOUT_OK              3001
#define IDC_ABOUT_NAME            3009
#define IDC_ABOUT_VERSION         3010
#define IDC_ABOUT_PICTURE         500

// ---- Icons, cursor, bitmap, sounds
#define IDI_LOGO                  99
#define IDI_MAIN_WINDOW           103
#define IDI_TRAY_WINDOW           108
#define IDR_HAND_CURSOR                123
#define IDW_SNAP                  124
#define IDW_CLICK                 125
#define IDB_ABOUT_PICTURE         500
