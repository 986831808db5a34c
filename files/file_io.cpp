#include "files/file_io.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "files/file_prompt.h"

namespace {

constexpr DWORD ChunkSize = 64 * 1024;
// Temporary files are named "~tv", hex digits and, where the path has room, ".tmp": nothing
// else is ever taken for one, and a name that fits any folder the saved file fits.
constexpr const char* TempPrefix = "~tv";
constexpr const char* TempSuffix = ".tmp";
constexpr int TempDigits = 8;
constexpr int TempTries = 64;

WriteFileFunction writeFunction = WriteFile;

// Writes in chunks, so that a failure part-way is seen where it happens.
bool writeAll(HANDLE file, const std::vector<uint8_t>& bytes)
{
    size_t done = 0;
    while (done < bytes.size()) {
        const DWORD chunk = static_cast<DWORD>(std::min<size_t>(ChunkSize, bytes.size() - done));
        DWORD written = 0;
        if (!writeFunction(file, bytes.data() + done, chunk, &written, nullptr) || written != chunk)
            return false;
        done += chunk;
    }
    return true;
}

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f');
}

// Whether name is one this writer gives its temporary files.
bool isTemporaryName(const std::string& name)
{
    const size_t prefix = strlen(TempPrefix), suffix = strlen(TempSuffix);
    if (name.compare(0, prefix, TempPrefix) != 0)
        return false;
    size_t end = name.size();
    if (end > prefix + suffix && name.compare(end - suffix, suffix, TempSuffix) == 0)
        end -= suffix;
    if (end == prefix)
        return false;
    for (size_t i = prefix; i < end; ++i) {
        if (!isHexDigit(name[i]))
            return false;
    }
    return true;
}

// Removes what saves that were cut short (the program killed, the power lost) left in
// folder. A save under way elsewhere keeps its file open, and its file is not removed.
void removeLeftTemporaries(const std::string& folder)
{
    const std::string pattern = folder + "\\" + TempPrefix + "*";
    if (pattern.size() >= MAX_PATH)
        return;
    WIN32_FIND_DATAA found;
    HANDLE search = FindFirstFileA(pattern.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return;
    do {
        if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) &&
            isTemporaryName(found.cFileName))
            DeleteFileA((folder + "\\" + found.cFileName).c_str());
    } while (FindNextFileA(search, &found));
    FindClose(search);
}

// A new file in folder whose whole path fits MAX_PATH, opened for writing; its path goes to
// temporary (MAX_PATH).
HANDLE createTemporary(const std::string& folder, char* temporary)
{
    const int room = MAX_PATH - 1 - static_cast<int>(folder.size()) - 1;
    const int prefix = static_cast<int>(strlen(TempPrefix));
    const int suffix = static_cast<int>(strlen(TempSuffix));
    if (room < prefix + 1)
        return INVALID_HANDLE_VALUE;
    const int digits = std::min(TempDigits, room - prefix);
    const bool withSuffix = prefix + digits + suffix <= room;
    DWORD seed = GetTickCount() ^ (GetCurrentProcessId() << 16);
    for (int attempt = 0; attempt < TempTries; ++attempt, seed = seed * 1103515245u + 12345u) {
        char hex[TempDigits + 1];
        wsprintfA(hex, "%08lx", static_cast<unsigned long>(seed));
        const std::string name = std::string(TempPrefix) + std::string(hex + TempDigits - digits) +
                                 (withSuffix ? TempSuffix : "");
        const std::string path = folder + "\\" + name;
        HANDLE file = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE) {
            lstrcpynA(temporary, path.c_str(), MAX_PATH);
            return file;
        }
        if (GetLastError() != ERROR_FILE_EXISTS && GetLastError() != ERROR_ALREADY_EXISTS)
            return INVALID_HANDLE_VALUE;
    }
    return INVALID_HANDLE_VALUE;
}

}  // namespace

void setWriteFileFunction(WriteFileFunction function)
{
    writeFunction = function ? function : WriteFile;
}

FileRead readWholeFile(const char* path, std::vector<uint8_t>& bytes, size_t limit)
{
    bytes.clear();
    HANDLE file = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return FileRead::CannotOpen;
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file, &size) || static_cast<uint64_t>(size.QuadPart) > limit) {
        CloseHandle(file);
        return FileRead::TooLarge;
    }
    const DWORD low = static_cast<DWORD>(size.QuadPart);
    bytes.resize(low);
    DWORD total = 0;
    while (total < low) {
        DWORD got = 0;
        if (!ReadFile(file, bytes.data() + total, low - total, &got, nullptr) || got == 0)
            break;
        total += got;
    }
    CloseHandle(file);
    bytes.resize(total);  // a file that shrank while being read is judged as read
    return FileRead::Read;
}

bool writeFileSafely(const char* path, const std::vector<uint8_t>& bytes)
{
    char folderText[MAX_PATH];
    folderOf(path, folderText, nullptr);
    const std::string folder = folderText[0] ? folderText : ".";
    removeLeftTemporaries(folder);
    char temporary[MAX_PATH];
    HANDLE file = createTemporary(folder, temporary);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    bool ok = writeAll(file, bytes) && FlushFileBuffers(file);
    ok = CloseHandle(file) && ok;
    ok = ok && MoveFileExA(temporary, path, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
    if (!ok)
        DeleteFileA(temporary);
    return ok;
}
