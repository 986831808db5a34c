#include "app/settings.h"

#include <cstdlib>
#include <cstring>
#include <vector>

#include "app/main_window.h"

namespace {

constexpr int QueryBufferSize = 1024;
char productKey[SettingTextSize] = "Software\\Tovira Software\\";
bool productKeyBuilt = false;

HKEY openKey(const char* keyPath)
{
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, keyPath, 0, KEY_ALL_ACCESS, &key) != ERROR_SUCCESS)
        return nullptr;
    return key;
}

}  // namespace

const char* SettingsProductKey()
{
    if (!productKeyBuilt) {
        lstrcatA(productKey, ProgramName);
        productKeyBuilt = true;
    }
    return productKey;
}

void RedirectSettings(const char* key)
{
    lstrcpynA(productKey, key, sizeof productKey);
    productKeyBuilt = true;
}

char* NewSettingsKey(const char* leaf)
{
    const char* root = SettingsProductKey();
    char* key = static_cast<char*>(malloc(strlen(root) + strlen(leaf) + 1));
    strcpy(key, root);
    strcat(key, leaf);
    return key;
}

bool CreateSettingsKey(const char* keyPath)
{
    HKEY key = nullptr;
    if (RegCreateKeyExA(HKEY_CURRENT_USER, keyPath, 0, nullptr, REG_OPTION_NON_VOLATILE,
                        KEY_ALL_ACCESS, nullptr, &key, nullptr) != ERROR_SUCCESS)
        return false;
    RegCloseKey(key);
    return true;
}

bool QueryStringValue(const char* keyPath, const char* name, char* destination, int size)
{
    HKEY key = openKey(keyPath);
    if (!key)
        return false;
    // One byte more than the value, so that a value stored without its zero still ends.
    std::vector<char> data(QueryBufferSize + 1, '\0');
    DWORD type = 0, length = QueryBufferSize;
    LONG result =
        RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(data.data()), &length);
    if (result == ERROR_MORE_DATA) {
        data.assign(length + 1, '\0');
        result = RegQueryValueExA(key, name, nullptr, &type, reinterpret_cast<BYTE*>(data.data()),
                                  &length);
    }
    RegCloseKey(key);
    if (result != ERROR_SUCCESS)
        return false;
    if (type == REG_SZ)
        lstrcpynA(destination, data.data(), size);
    else if (type == REG_DWORD)
        destination[0] = '\0';
    return true;
}

bool WriteSetting(const char* keyPath, const char* name, const char* text)
{
    HKEY key = openKey(keyPath);
    if (!key)
        return false;
    const LONG result = RegSetValueExA(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text),
                                       static_cast<DWORD>(strlen(text) + 1));
    return RegCloseKey(key) == ERROR_SUCCESS && result == ERROR_SUCCESS;
}

bool WriteIntSetting(const char* keyPath, const char* name, int value)
{
    char text[IntSettingTextSize];
    wsprintfA(text, "%d", value);
    return WriteSetting(keyPath, name, text);
}

void ReadSetting(const char* keyPath, const char* name, const char* defaultText, char* destination)
{
    if (QueryStringValue(keyPath, name, destination, SettingTextSize))
        return;
    CreateSettingsKey(keyPath);
    lstrcpynA(destination, defaultText, SettingTextSize);
    WriteSetting(keyPath, name, defaultText);
}

void ReadIntSetting(const char* keyPath, const char* name, const char* defaultText,
                    int& destination)
{
    char text[IntSettingTextSize] = {};
    if (!QueryStringValue(keyPath, name, text, sizeof text)) {
        CreateSettingsKey(keyPath);
        lstrcpynA(text, defaultText, sizeof text);
        WriteSetting(keyPath, name, defaultText);
    }
    destination = static_cast<int>(strtol(text, nullptr, 10));  // saturates, unlike atoi
}
