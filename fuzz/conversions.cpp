// Variants of every kind against each other, and texts that become values and texts again.

#include <array>
#include <clocale>
#include <cmath>
#include <cstring>

#include "failing_memory.h"
#include "input.h"

namespace {

using namespace mosaic2;

struct CountedObject final : object_t {
    void retain() override {}
    void release() override { ++m_releases; }
    int m_releases = 0;
};

/// A variant of any kind made of these bytes, which borrowed texts refer to.
variant_t makeVariant(das_variant_type_t type, std::string const& bytes, std::wstring const& wide,
                      object_t* object) {
    variant_t value;
    auto const makeBlock = [&](void const* payload, std::size_t size) {
        void* const memory = variant_t::m_mem.m_allocate(sizeof(variant_t::data_header_t) + size);
        auto* const header = static_cast<variant_t::data_header_t*>(memory);
        *header = {size, 1};
        std::memcpy(header + 1, payload, size);
        value.m_value.m_data = header + 1;
    };
    switch (type) {
        case vtString:
            return variant_t(bytes.c_str());
        case vtStringRef:
            return variant_t(bytes.empty() ? nullptr : bytes.c_str(), true);
        case vtWString:
            makeBlock(wide.c_str(), sizeof(wchar_t) * (wide.size() + 1));
            break;
        case vtWStringRef:
            value.m_value.m_wide_text = wide.empty() ? nullptr : wide.c_str();
            break;
        case vtBlob:
            makeBlock(bytes.data(), bytes.size());
            break;
        case vtObject:
            makeBlock(&object, sizeof(void*));
            break;
        default:
            bytes.copy(reinterpret_cast<char*>(&value.m_value), sizeof(value.m_value));
    }
    value.m_type = type;
    return value;
}

bool isNan(variant_t const& value) {
    return value.can_get<double>() && std::isnan(value.get<double>());
}

void compareVariants(fuzz::Input& input) {
    CountedObject object;
    std::array<std::string, 2> bytes;
    std::array<std::wstring, 2> wide;
    std::array<variant_t, 2> made;
    int objects = 0;
    for (std::size_t i = 0; i < made.size(); ++i) {
        auto const type = static_cast<das_variant_type_t>(input.number(19));
        bytes[i] = input.text('\n');
        wide[i].assign(bytes[i].begin(), bytes[i].end());
        made[i] = makeVariant(type, bytes[i], wide[i], &object);
        objects += type == vtObject ? 1 : 0;
    }
    auto const& [left, right] = made;
    REQUIRE((left == right) == (right == left) && (left != right) != (left == right));
    REQUIRE(!(left < left) && !(left < right && right < left));
    REQUIRE(!(left < right && left == right));
    variant_t copy(left);
    copy = static_cast<variant_t const&>(copy);
    REQUIRE(isNan(left) || copy == left);
    copy = right;
    REQUIRE(isNan(right) || copy == right);
    copy.free_data();
    made = {};
    REQUIRE(object.m_releases == objects && memory::outstandingVariants == 0);
}

/// What the parser's positional option makes of `text`, or of nothing; vtNull if it refuses it.
variant_t parse(varo::Parser const& parser, char const* text, std::string& valueText) {
    varo::Result const result = parser.createResult();
    std::vector<std::string> arguments{"tool", "--"};
    text != nullptr ? arguments.emplace_back(text) : arguments.back();
    int const code = fuzz::parse(parser, arguments, result.interface());
    varo::Value const value = result.interface()->get("v", 0, varo::kNoPosition);
    REQUIRE(code == varo::kSuccess || value.value().m_type == vtNull);
    valueText = value.text();
    return value.value();
}

/// What the standard library reads from a text that was accepted.
variant_t readPlainly(das_variant_type_t type, char const* text) {
    static locale_t const locale = newlocale(LC_ALL_MASK, "C", nullptr);
    switch (type) {
        case vtS32:
        case vtS64:
            return std::strtoll(text, nullptr, 10);
        case vtU32:
            return std::strtoull(text, nullptr, 10);
        case vtU64:
            return std::strtoull(text, nullptr, std::strpbrk(text, "xXABCDEFabcdef") ? 16 : 10);
        case vtDouble:
            return strtod_l(text, nullptr, locale);
        default:
            return variant_t(text);
    }
}

void convert(fuzz::Input& input) {
    static constexpr das_variant_type_t kTypes[] = {vtBool, vtS32,    vtU32,   vtS64,
                                                    vtU64,  vtDouble, vtString};
    das_variant_type_t const type = kTypes[input.number(7)];
    std::string const text = input.text();
    varo::Parser const parser(varo::kKeepCommas | varo::kPositionalAfterMarker);
    parser->setReplace(true);
    parser->option("v", "", type, "")->positional();
    std::string valueText;
    variant_t const value = parse(parser, text.c_str(), valueText);
    if (value.m_type != vtNull) {
        REQUIRE(value.m_type == type && valueText == text);
        REQUIRE(type == vtBool || value == readPlainly(type, text.c_str()));
        parser->option("v", "", type, "")->positional()->defaultValue(value);
        REQUIRE(parse(parser, nullptr, valueText) == value);
        REQUIRE(parse(parser, std::string(valueText).c_str(), valueText) == value);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    fuzz::Input input(data, size);
    input.number(2) == 0 ? convert(input) : compareVariants(input);
    REQUIRE(memory::outstandingVariants == 0);
    return 0;
}
