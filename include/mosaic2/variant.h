#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "BRIX/assertion.h"
#include "varo/export.h"

/// Reports a failed check to the assertion hook and goes on.
#define MOSAIC2_ASSERT(condition, text)                                                      \
    ((condition) ? static_cast<void>(0)                                                      \
                 : ::BRIX::debug::_private::assertion((text), "mosaic2/variant.h", __LINE__, \
                                                      __PRETTY_FUNCTION__))

namespace mosaic2 {

/// The tag of a variant. Tags below 10 are integers, the odd ones unsigned; 10 and 11 are floating
/// point. The numbers that have no name here are kinds that the parser does not produce.
enum das_variant_type_t : std::int32_t {
    /// 0 is false, anything else true.
    vtBool = 0,

    /// Signed and unsigned integers of 32 and 64 bits.
    vtS32 = 6,
    vtU32 = 7,
    vtS64 = 8,
    vtU64 = 9,

    /// The bits of a double.
    vtDouble = 11,

    /// A narrow or wide string in a shared block.
    vtString = 12,
    vtWString = 13,

    /// A borrowed narrow or wide string.
    vtStringRef = 14,
    vtWStringRef = 15,

    /// Bytes in a shared block.
    vtBlob = 16,

    /// No value.
    vtNull = 17,

    /// A shared block that begins with a pointer to an object_t.
    vtObject = 18
};

/// Compares two texts by bytes (wide ones by code units): negative, zero or positive as `left`
/// sorts before, equal to or after `right`. Null is the same as the empty text.
VARO_EXPORT int string_compare(char const* left, char const* right);
VARO_EXPORT int string_compare(wchar_t const* left, wchar_t const* right);

/// Orders the payloads of two vtObject blocks by the addresses of the objects that they begin with:
/// negative, zero or positive. A null payload is the same as one without an object.
VARO_EXPORT int notype_ptr_compare(void const* left, void const* right);

namespace internal {

/// Atomically changes a reference count in place and returns the new count.
VARO_EXPORT int sync_inc(int* count);
VARO_EXPORT int sync_dec(int* count);

/// Throws std::bad_alloc, even in programs that are compiled without exceptions.
[[noreturn]] VARO_EXPORT void throw_bad_alloc();

}  // namespace internal

/// What a vtObject block refers to. The slots are fixed.
class object_t {
public:
    /// Never called here.
    virtual void retain() = 0;

    /// Called when the last variant that referred to the object is gone.
    virtual void release() = 0;

protected:
    ~object_t() = default;
};

/// A value of one of the kinds of das_variant_type_t. Strings, blobs and objects live in blocks
/// that copies share and the last copy frees; blocks come from m_mem, so a program and the library
/// may release each other's. Counts are changed atomically: copies may be used on different
/// threads, a single variant on one thread at a time.
///
/// The two fields and the layout of blocks are a binary contract, so they are public. A failed
/// check is reported to BRIX::debug::_private::assertion, and the operation goes on.
struct variant_t {
    /// What precedes the payload of a block.
    struct data_header_t {
        /// Of the payload, in bytes; includes a string's terminating zero.
        std::uint64_t m_size;

        /// References to the block.
        std::int32_t m_count;
    };

    /// How blocks are freed and allocated. Both functions deal in the address of the header. The
    /// allocator is given the size including the header and may return null. A program may store
    /// its own functions while no block exists.
    struct memory_functions_t {
        void (*m_free)(void* header);
        void* (*m_allocate)(std::size_t size);
    };

    static VARO_EXPORT memory_functions_t m_mem;

    union value_t {
        std::int64_t m_signed;
        std::uint64_t m_unsigned;
        double m_double;
        char const* m_text;
        wchar_t const* m_wide_text;
        /// The payload of a block.
        void* m_data;
    };

    value_t m_value;
    das_variant_type_t m_type;

    variant_t() noexcept : m_value{0}, m_type(vtNull) {}
    variant_t(bool value) noexcept : m_value{value ? 1 : 0}, m_type(vtBool) {}
    variant_t(int value) noexcept : m_value{value}, m_type(vtS32) {}
    variant_t(unsigned int value) noexcept : m_value{value}, m_type(vtU32) {}
    variant_t(long value) noexcept : m_value{value}, m_type(vtS64) {}
    variant_t(unsigned long value) noexcept : m_type(vtU64) { m_value.m_unsigned = value; }
    variant_t(long long value) noexcept : m_value{value}, m_type(vtS64) {}
    variant_t(unsigned long long value) noexcept : m_type(vtU64) { m_value.m_unsigned = value; }
    variant_t(double value) noexcept : m_type(vtDouble) { m_value.m_double = value; }

    /// A copy of `text` or, with `borrow`, the pointer itself, which must then outlive every copy
    /// of this variant. Null gives a string that reads as "" (borrowed: as null). Throws
    /// std::bad_alloc.
    variant_t(char const* text, bool borrow = false) : m_type(vtStringRef) {
        if (borrow) {
            m_value.m_text = text;
        } else {
            make_string(text, text != nullptr ? std::strlen(text) : 0);
        }
    }

    /// A pointer to anything else would become a boolean.
    variant_t(void const*) = delete;

    /// A string of the `length` bytes at `text`. Requires: none of them is zero. Throws
    /// std::bad_alloc.
    static variant_t copy_of(char const* text, std::size_t length) {
        variant_t result;
        result.make_string(text, length);
        return result;
    }

    variant_t(variant_t const& other) noexcept : m_value(other.m_value), m_type(other.m_type) {
        add_reference();
    }

    variant_t(variant_t&& other) noexcept : m_value(other.m_value), m_type(other.m_type) {
        other.m_value.m_signed = 0;
        other.m_type = vtNull;
    }

    variant_t& operator=(variant_t const& other) noexcept {
        other.add_reference();
        value_t const oldValue = m_value;
        das_variant_type_t const oldType = m_type;
        m_value = other.m_value;
        m_type = other.m_type;
        drop_reference(oldValue, oldType);
        return *this;
    }

    variant_t& operator=(variant_t&& other) noexcept {
        if (this != &other) {
            value_t const oldValue = m_value;
            das_variant_type_t const oldType = m_type;
            m_value = other.m_value;
            m_type = other.m_type;
            other.m_value.m_signed = 0;
            other.m_type = vtNull;
            drop_reference(oldValue, oldType);
        }
        return *this;
    }

    ~variant_t() { free_data(); }

    /// Releases the value and leaves vtNull.
    void free_data() noexcept {
        value_t const oldValue = m_value;
        das_variant_type_t const oldType = m_type;
        m_type = vtNull;
        if (is_shared(oldType)) {
            m_value.m_data = nullptr;
            release_block(oldValue, oldType);
        }
    }

    /// Whether get<Type>() reads values with this tag: int and unsigned int read the tags up to 7,
    /// bool and the larger integers those up to 9, double all numbers, char const* narrow strings.
    template <class Type>
    bool can_get() const noexcept = delete;

    /// The value as Type. Where can_get<Type>() is false, that is reported to the assertion hook
    /// and the stored bits are read as they are.
    template <class Type>
    Type get() const = delete;

    /// Orders values of the same kind by size, numbers of different kinds by value (two integers as
    /// signed ones, unless both are unsigned), and puts the higher tag first otherwise.
    bool operator<(variant_t const& other) const;

    /// Numbers are equal by value (two integers by their bits), strings by their text, owned or
    /// borrowed, blobs by their bytes, objects by identity. Two nulls are equal. Values of
    /// different kinds are not.
    bool operator==(variant_t const& other) const;
    bool operator!=(variant_t const& other) const { return !(*this == other); }

private:
    static bool is_integer(das_variant_type_t type) noexcept { return type >= 0 && type <= 9; }
    static bool is_number(das_variant_type_t type) noexcept {
        return type >= 0 && type <= vtDouble;
    }
    static bool is_unsigned(das_variant_type_t type) noexcept { return (type & 1) != 0; }
    static bool is_narrow(das_variant_type_t type) noexcept {
        return type == vtString || type == vtStringRef;
    }
    static bool is_wide(das_variant_type_t type) noexcept {
        return type == vtWString || type == vtWStringRef;
    }
    // Inlined in code that is built for size, too: it becomes smaller, and 2 % faster.
    [[gnu::always_inline]] static bool is_shared(das_variant_type_t type) noexcept {
        return type == vtString || type == vtWString || type == vtBlob || type == vtObject;
    }
    static data_header_t* header_of(void* data) noexcept {
        return reinterpret_cast<data_header_t*>(static_cast<char*>(data) - sizeof(data_header_t));
    }

    /// Whether this is a string without any bytes, not even the terminating zero: a null text, for
    /// which programs other than this library may allocate nothing after the header.
    bool has_no_text(das_variant_type_t owned) const noexcept {
        return m_type == owned && m_value.m_data != nullptr &&
               header_of(m_value.m_data)->m_size == 0;
    }
    char const* narrow_text() const noexcept { return has_no_text(vtString) ? "" : m_value.m_text; }
    wchar_t const* wide_text() const noexcept {
        return has_no_text(vtWString) ? L"" : m_value.m_wide_text;
    }

    /// The block of a null text, whose size is 0, still gets one byte for a terminating zero.
    [[gnu::noinline]] void make_string(char const* text, std::size_t length) {
        void* const memory = m_mem.m_allocate(sizeof(data_header_t) + length + 1);
        if (memory == nullptr) {
            internal::throw_bad_alloc();
        }
        data_header_t* const header = static_cast<data_header_t*>(memory);
        header->m_size = text != nullptr ? length + 1 : 0;
        header->m_count = 1;
        char* const payload = reinterpret_cast<char*>(header + 1);
        if (text != nullptr) {
            std::memcpy(payload, text, length);
        }
        payload[length] = '\0';
        m_value.m_data = payload;
        m_type = vtString;
    }

    void add_reference() const noexcept {
        if (is_shared(m_type)) {
            MOSAIC2_ASSERT(m_value.m_data != nullptr, "m_value.m_data != NULL");
            data_header_t* const h =
                m_value.m_data != nullptr ? header_of(m_value.m_data) : nullptr;
            MOSAIC2_ASSERT(h != nullptr, "h != NULL");
            if (h != nullptr) {
                internal::sync_inc(&h->m_count);
            }
        }
    }

    static void drop_reference(value_t value, das_variant_type_t type) noexcept {
        if (is_shared(type)) {
            release_block(value, type);
        }
    }

    [[gnu::noinline]] static void release_block(value_t value, das_variant_type_t type) noexcept {
        MOSAIC2_ASSERT(value.m_data != nullptr, "m_value.m_data != NULL");
        if (value.m_data == nullptr) {
            return;
        }
        data_header_t* const header = header_of(value.m_data);
        if (internal::sync_dec(&header->m_count) != 0) {
            return;
        }
        if (type == vtObject) {
            // The block is kept while the object is released: release() may copy and destroy
            // variants of this very block, which must not free it a second time.
            internal::sync_inc(&header->m_count);
            object_t* object = nullptr;
            std::memcpy(&object, value.m_data, sizeof(object));
            std::memset(value.m_data, 0, sizeof(object));
            if (object != nullptr) {
                object->release();
            }
            if (internal::sync_dec(&header->m_count) != 0) {
                return;
            }
        }
        m_mem.m_free(header);
    }

    double to_double() const noexcept {
        if (!is_integer(m_type)) {
            return m_value.m_double;
        }
        return is_unsigned(m_type) ? static_cast<double>(m_value.m_unsigned)
                                   : static_cast<double>(m_value.m_signed);
    }

    std::uint64_t blob_size() const {
        MOSAIC2_ASSERT(m_value.m_data != nullptr, "m_value.m_data != NULL");
        return m_value.m_data != nullptr ? header_of(m_value.m_data)->m_size : 0;
    }

    /// -1, 0 or 1 for two blobs.
    int compare_blobs(variant_t const& other) const {
        std::uint64_t const size = blob_size();
        std::uint64_t const otherSize = other.blob_size();
        if (size != otherSize) {
            return size < otherSize ? -1 : 1;
        }
        int const order = size != 0 ? std::memcmp(m_value.m_data, other.m_value.m_data, size) : 0;
        return order < 0 ? -1 : order > 0 ? 1 : 0;
    }
};

template <>
inline bool variant_t::can_get<bool>() const noexcept {
    return is_integer(m_type);
}
template <>
inline bool variant_t::can_get<int>() const noexcept {
    return m_type >= 0 && m_type <= vtU32;
}
template <>
inline bool variant_t::can_get<unsigned int>() const noexcept {
    return m_type >= 0 && m_type <= vtU32;
}
template <>
inline bool variant_t::can_get<long>() const noexcept {
    return is_integer(m_type);
}
template <>
inline bool variant_t::can_get<unsigned long>() const noexcept {
    return is_integer(m_type);
}
template <>
inline bool variant_t::can_get<long long>() const noexcept {
    return is_integer(m_type);
}
template <>
inline bool variant_t::can_get<unsigned long long>() const noexcept {
    return is_integer(m_type);
}
template <>
inline bool variant_t::can_get<double>() const noexcept {
    return is_number(m_type);
}
template <>
inline bool variant_t::can_get<char const*>() const noexcept {
    return is_narrow(m_type);
}

template <>
inline bool variant_t::get<bool>() const {
    MOSAIC2_ASSERT(can_get<bool>(), "can_get<bool>()");
    return m_value.m_unsigned != 0;
}
template <>
inline int variant_t::get<int>() const {
    MOSAIC2_ASSERT(can_get<int>(), "can_get<s32_t>()");
    return static_cast<int>(m_value.m_signed);
}
template <>
inline unsigned int variant_t::get<unsigned int>() const {
    MOSAIC2_ASSERT(can_get<unsigned int>(), "can_get<u32_t>()");
    return static_cast<unsigned int>(m_value.m_unsigned);
}
template <>
inline long variant_t::get<long>() const {
    MOSAIC2_ASSERT(can_get<long>(), "can_get<s64_t>()");
    return m_value.m_signed;
}
template <>
inline unsigned long variant_t::get<unsigned long>() const {
    MOSAIC2_ASSERT(can_get<unsigned long>(), "can_get<u64_t>()");
    return m_value.m_unsigned;
}
template <>
inline long long variant_t::get<long long>() const {
    MOSAIC2_ASSERT(can_get<long long>(), "can_get<s64_t>()");
    return m_value.m_signed;
}
template <>
inline unsigned long long variant_t::get<unsigned long long>() const {
    MOSAIC2_ASSERT(can_get<unsigned long long>(), "can_get<u64_t>()");
    return m_value.m_unsigned;
}
template <>
inline double variant_t::get<double>() const {
    MOSAIC2_ASSERT(can_get<double>(), "can_get<double>()");
    return to_double();
}
template <>
inline char const* variant_t::get<char const*>() const {
    MOSAIC2_ASSERT(can_get<char const*>(), "can_get<const char*>()");
    return narrow_text();
}

inline bool variant_t::operator<(variant_t const& other) const {
    das_variant_type_t const type = m_type;
    das_variant_type_t const otherType = other.m_type;
    if (is_integer(type) && is_integer(otherType)) {
        return is_unsigned(type) && is_unsigned(otherType)
                   ? m_value.m_unsigned < other.m_value.m_unsigned
                   : m_value.m_signed < other.m_value.m_signed;
    }
    if (is_number(type) && is_number(otherType)) {
        return to_double() < other.to_double();
    }
    if (is_narrow(type) && is_narrow(otherType)) {
        return string_compare(narrow_text(), other.narrow_text()) < 0;
    }
    if (is_wide(type) && is_wide(otherType)) {
        return string_compare(wide_text(), other.wide_text()) < 0;
    }
    if (type != otherType) {
        return otherType < type;  // intended: between kinds the higher tag sorts first
    }
    if (type == vtBlob) {
        return compare_blobs(other) < 0;
    }
    if (type == vtObject) {
        return notype_ptr_compare(m_value.m_data, other.m_value.m_data) < 0;
    }
    MOSAIC2_ASSERT(type == vtNull, "m_type == vtNull && var.m_type == vtNull");
    return false;
}

inline bool variant_t::operator==(variant_t const& other) const {
    das_variant_type_t const type = m_type;
    das_variant_type_t const otherType = other.m_type;
    if (is_integer(type) && is_integer(otherType)) {
        return m_value.m_unsigned == other.m_value.m_unsigned;
    }
    if (is_number(type) && is_number(otherType)) {
        return to_double() == other.to_double();
    }
    if (is_narrow(type) && is_narrow(otherType)) {
        return string_compare(narrow_text(), other.narrow_text()) == 0;
    }
    if (is_wide(type) && is_wide(otherType)) {
        return string_compare(wide_text(), other.wide_text()) == 0;
    }
    if (type != otherType) {
        return false;
    }
    if (type == vtBlob) {
        return compare_blobs(other) == 0;
    }
    if (type == vtObject) {
        return notype_ptr_compare(m_value.m_data, other.m_value.m_data) == 0;
    }
    MOSAIC2_ASSERT(type == vtNull, "m_type == vtNull && var.m_type == vtNull");
    return true;
}

static_assert(sizeof(variant_t) == 16, "the layout of variant_t is fixed");
static_assert(sizeof(variant_t::data_header_t) == 16, "the layout of blocks is fixed");

}  // namespace mosaic2

#undef MOSAIC2_ASSERT
