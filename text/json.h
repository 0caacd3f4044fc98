// JSON is read and written by RapidJSON, with memory that is checked.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <new>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

namespace text::json
{

// RapidJSON expects that memory is always there, but its own allocator returns null when there is none. This one throws
// std::bad_alloc.
struct Memory {
    static const bool kNeedFree = true;

    void *Malloc(size_t size) { return size ? checked(std::malloc(size)) : nullptr; }
    void *Realloc(void *block, size_t, size_t size)
    {
        if (size) return checked(std::realloc(block, size));
        std::free(block);
        return nullptr;
    }
    static void Free(void *block) { std::free(block); }

private:
    static void *checked(void *block)
    {
        if (!block) throw std::bad_alloc();
        return block;
    }
};

using Buffer = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, Memory>;
using Writer = rapidjson::Writer<Buffer, rapidjson::UTF8<>, rapidjson::UTF8<>, Memory>;
using Document = rapidjson::GenericDocument<rapidjson::UTF8<>, rapidjson::MemoryPoolAllocator<Memory>, Memory>;
using Value = Document::ValueType;

} // namespace text::json
