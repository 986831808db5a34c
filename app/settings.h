#pragma once
// Options in the registry of the current user: every value a string, read with a default
// that is written back when the value is missing. Registry failures are silent.
#include <windows.h>

constexpr int SettingTextSize = MAX_PATH;  // texts and paths: 259 characters
constexpr int IntSettingTextSize = 25;     // the text of an integer: 24 characters

// The product's key under HKEY_CURRENT_USER, "Software\Tovira Software\ToviraPuzzle"
// unless redirected (tests use a key of their own), and a new malloc'd key path below it.
const char* SettingsProductKey();
void RedirectSettings(const char* productKey);
char* NewSettingsKey(const char* leaf);

bool CreateSettingsKey(const char* keyPath);
// destination holds size characters; longer texts are cut. A REG_DWORD value reads as
// empty text; a value of another type leaves destination as it was.
bool QueryStringValue(const char* keyPath, const char* name, char* destination, int size);
bool WriteSetting(const char* keyPath, const char* name, const char* text);
bool WriteIntSetting(const char* keyPath, const char* name, int value);
// destination holds SettingTextSize characters.
void ReadSetting(const char* keyPath, const char* name, const char* defaultText, char* destination);
void ReadIntSetting(const char* keyPath, const char* name, const char* defaultText,
                    int& destination);
