#include "files/file_io.h"

#include <algorithm>

#include "files/file_prompt.h"

namespace {

constexpr DWORD ChunkSize = 64 * 1024;
constexpr const char* TempPrefix = "tvp";

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
    char folder[MAX_PATH];
    folderOf(path, folder, nullptr);
    if (!folder[0])
        lstrcpyA(folder, ".");
    char temporary[MAX_PATH];
    if (!GetTempFileNameA(folder, TempPrefix, 0, temporary))
        return false;
    HANDLE file = CreateFileA(temporary, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr);
    bool ok = file != INVALID_HANDLE_VALUE;
    if (ok) {
        ok = writeAll(file, bytes) && FlushFileBuffers(file);
        ok = CloseHandle(file) && ok;
    }
    ok = ok && MoveFileExA(temporary, path, MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
    if (!ok)
        DeleteFileA(temporary);
    return ok;
}
