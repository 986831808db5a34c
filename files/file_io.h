#pragma once
// Whole-file reading and writing for the puzzle and collection files. A save never
// destroys the previous file: it is replaced only once the new one is completely written.
#include <cstdint>
#include <vector>
#include <windows.h>

enum class FileRead { Read, CannotOpen, TooLarge };

// Reads the whole file, sharing it with other readers; files above limit bytes are not read.
FileRead readWholeFile(const char* path, std::vector<uint8_t>& bytes, size_t limit);

// Writes bytes to a new file in path's folder, flushes it and then moves it over path.
// False when any step fails; path is then as it was and the new file is gone.
bool writeFileSafely(const char* path, const std::vector<uint8_t>& bytes);

// The write function of writeFileSafely, replaceable so that tests can make a write fail
// part-way as a full disk would; nullptr restores WriteFile.
using WriteFileFunction = BOOL(WINAPI*)(HANDLE, LPCVOID, DWORD, LPDWORD, LPOVERLAPPED);
void setWriteFileFunction(WriteFileFunction function);
