#pragma once
// Little-endian writing and bounds-checked reading of the file formats' fields. Plain C++:
// no platform headers, so the codecs build and fuzz natively.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// Writers say the whole size first, so the buffer is had once, never grown on the way.
class ByteWriter {
public:
    explicit ByteWriter(size_t size = 0) { bytes.reserve(size); }

    void int32(int32_t value)
    {
        const uint32_t v = static_cast<uint32_t>(value);
        const uint8_t little[4] = {static_cast<uint8_t>(v), static_cast<uint8_t>(v >> 8),
                                   static_cast<uint8_t>(v >> 16), static_cast<uint8_t>(v >> 24)};
        bytes.insert(bytes.end(), little, little + 4);
    }
    void byte(uint8_t value) { bytes.push_back(value); }
    void text(const std::string& value) { bytes.insert(bytes.end(), value.begin(), value.end()); }

    std::vector<uint8_t> bytes;
};

// Every read past the end fails and leaves the reader failed; callers check ok() once
// after a record instead of after every field.
class ByteReader {
public:
    ByteReader(const uint8_t* data, size_t size) : data(data), size(size) {}

    int32_t int32()
    {
        if (!has(4))
            return 0;
        uint32_t v = 0;
        for (int i = 3; i >= 0; --i)
            v = (v << 8) | data[position + i];
        position += 4;
        return static_cast<int32_t>(v);
    }
    uint8_t byte()
    {
        if (!has(1))
            return 0;
        return data[position++];
    }
    std::string text(size_t length)
    {
        if (!has(length))
            return std::string();
        std::string value(reinterpret_cast<const char*>(data + position), length);
        position += length;
        return value;
    }
    void skip(size_t length)
    {
        if (has(length))
            position += length;
    }

    bool ok() const { return !failed; }
    size_t remaining() const { return size - position; }

private:
    bool has(size_t length)
    {
        if (failed || length > size - position) {
            failed = true;
            return false;
        }
        return true;
    }

    const uint8_t* data;
    size_t size;
    size_t position = 0;
    bool failed = false;
};
