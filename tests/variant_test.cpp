#include <cmath>
#include <cstdlib>
#include <cwchar>
#include <limits>
#include <new>
#include <thread>

#include "support.h"

namespace {

using namespace mosaic2;
using varo_test::show;

variant_t tagged(int tag, std::int64_t bits) {
    variant_t value;
    value.m_value.m_signed = bits;
    value.m_type = static_cast<das_variant_type_t>(tag);
    return value;
}

variant_t::data_header_t& header(variant_t const& value) {
    return static_cast<variant_t::data_header_t*>(value.m_value.m_data)[-1];
}

variant_t block(das_variant_type_t tag, void const* bytes, std::size_t size) {
    variant_t value = variant_t::copy_of(static_cast<char const*>(bytes), size);
    header(value).m_size = size;
    value.m_type = tag;
    return value;
}

variant_t wide(wchar_t const* text) {
    return block(vtWString, text, (std::wcslen(text) + 1) * sizeof(wchar_t));
}

variant_t wideReference(wchar_t const* text) {
    variant_t value = tagged(vtWStringRef, 0);
    value.m_value.m_wide_text = text;
    return value;
}

variant_t const kNull;

TEST(Variant, OrdersAndComparesEveryKind) {
    double const infinity = std::numeric_limits<double>::infinity();
    struct Row {
        variant_t left, right;
        char relation;  // '<' before; '=' equal; '~' neither, whichever way round
    };
    std::vector<Row> const rows{
        Row{-1, 0, '<'}, Row{1U, 0xFFFFFFFFU, '<'}, Row{-1L, 0LL, '<'}, Row{1UL, ~0ULL, '<'},
        // Two kinds of integers: signed unless both are unsigned, and equal bit by bit.
        Row{-1, 0U, '<'}, Row{~0ULL, 0, '<'}, Row{0U, ~0ULL, '<'}, Row{~0ULL, -1, '='},
        Row{0xFFFFFFFFU, 0xFFFFFFFFULL, '='}, Row{true, 1, '='},
        Row{tagged(5, 1), tagged(1, -1), '<'}, Row{tagged(4, -1), tagged(2, 1), '<'},
        // A floating kind among them: by value, the unsigned ones never negative.
        Row{1.5, 2, '<'}, Row{-1, -0.5, '<'}, Row{1.0, ~0ULL, '<'},
        Row{~0ULL, 1.8446744073709551616e19, '='},
        Row{tagged(10, variant_t(2.0).m_value.m_signed), 2.0, '='}, Row{-infinity, infinity, '<'},
        Row{std::nan(""), 1.0, '~'},
        // Strings by their text, owned or not.
        Row{"a", "ab", '<'}, Row{"z", "\xC3\xA4", '<'}, Row{{"a", true}, "b", '<'},
        Row{"same", {"same", true}, '='},
        Row{static_cast<char const*>(nullptr), {nullptr, true}, '='},
        Row{wide(L"a"), wide(L"ab"), '<'}, Row{wideReference(L"a"), wide(L"\U0001F600"), '<'},
        Row{wide(L"\u00E4"), wideReference(L"\u00E4"), '='},
        Row{block(vtBlob, "zz", 2), block(vtBlob, "aaa", 3), '<'},
        Row{block(vtBlob, "a\0b", 3), block(vtBlob, "a\0c", 3), '<'},
        Row{block(vtBlob, "a\0b", 3), block(vtBlob, "a\0b", 3), '='}, Row{kNull, kNull, '='},
        // Between kinds the higher tag comes first.
        Row{"1", 1, '<'}, Row{{"a", true}, wide(L"a"), '<'}, Row{wideReference(L"a"), "a", '<'},
        Row{kNull, block(vtBlob, "a", 1), '<'}, Row{kNull, 1.0, '<'}};
    for (Row const& row : rows) {
        SCOPED_TRACE(show(row.left) + row.relation + show(row.right));
        EXPECT_EQ(row.left < row.right, row.relation == '<');
        EXPECT_FALSE(row.right < row.left);
        EXPECT_EQ(row.left == row.right, row.relation == '=');
        EXPECT_EQ(row.right == row.left, row.relation == '=');
        EXPECT_EQ(row.left != row.right, row.relation != '=');
    }
}

int g_blocks = 0;

/// Counts the blocks that exist.
class Variants : public ::testing::Test {
protected:
    Variants() : m_old(variant_t::m_mem) {
        g_blocks = 0;
        variant_t::m_mem = {[](void* header) { --g_blocks, std::free(header); },
                            [](std::size_t size) { return ++g_blocks, std::malloc(size); }};
    }
    ~Variants() override {
        EXPECT_EQ(g_blocks, 0);
        variant_t::m_mem = m_old;
    }

private:
    variant_t::memory_functions_t m_old;
};

TEST_F(Variants, ShareAndFreeBlocks) {
    variant_t text("four");
    EXPECT_EQ(header(text).m_size, 5U);
    EXPECT_EQ(header(text).m_count, 1);
    {
        variant_t const copy(text);
        variant_t assigned(7);
        assigned = copy;
        EXPECT_EQ(header(text).m_count, 3);
        EXPECT_EQ(assigned.m_value.m_data, text.m_value.m_data);
        assigned = "other";
        EXPECT_EQ(header(text).m_count, 2);
        EXPECT_EQ(g_blocks, 2);
    }
    variant_t const& alias = text;
    text = alias;
    text = static_cast<variant_t&&>(const_cast<variant_t&>(alias));
    EXPECT_EQ(header(text).m_count, 1);
    EXPECT_EQ(show(text), "'four'");
    text.free_data();
    EXPECT_EQ(text.m_type, vtNull);
    text.free_data();
    EXPECT_EQ(g_blocks, 0);

    // A shared block may be in use elsewhere.
    variant_t const shared("shared");
    auto const copyOften = [&] {
        for (int index = 0; index < 10000; ++index) {
            variant_t copy = shared;
            copy = variant_t();
        }
    };
    std::thread other(copyOften);
    copyOften();
    other.join();
    EXPECT_EQ(header(shared).m_count, 1);

    variant_t const nothing(static_cast<char const*>(nullptr));
    EXPECT_EQ(nothing.m_type, vtString);
    EXPECT_EQ(header(nothing).m_size, 0U);
    EXPECT_STREQ(nothing.get<char const*>(), "");
    variant_t const borrowed("literal", true);
    EXPECT_EQ(borrowed.m_type, vtStringRef);
    EXPECT_EQ(g_blocks, 2);
}

class Object final : public object_t {
public:
    void retain() override {}
    void release() override {
        ++m_released;
        variant_t const again(*m_alias);
        m_kept = again;
    }
    int m_released = 0;
    variant_t* m_alias = nullptr;
    variant_t m_kept;
};

TEST_F(Variants, NameTheSameObjectFromTwoBlocks) {
    variant_t alias;
    Object objects[2];
    objects[0].m_alias = objects[1].m_alias = &alias;
    object_t* const pointers[] = {&objects[0], &objects[0], &objects[1]};
    std::vector<variant_t> variants;
    for (object_t* const& pointer : pointers) {
        // NOLINTNEXTLINE(bugprone-sizeof-expression): the block holds the pointer itself
        variants.push_back(block(vtObject, &pointer, sizeof(pointer)));
    }
    EXPECT_TRUE(variants[0] == variants[1]);
    EXPECT_FALSE(variants[0] < variants[1] || variants[1] < variants[0]);
    EXPECT_FALSE(variants[0] == variants[2]);
    EXPECT_TRUE(variants[0] < variants[2] && !(variants[2] < variants[0]));
}

// Another program's null text may be a header alone, after which nothing may be read.
TEST_F(Variants, ReadNothingOfATextWithoutBytes) {
    for (das_variant_type_t const type : {vtString, vtWString}) {
        auto* const header = static_cast<variant_t::data_header_t*>(
            variant_t::m_mem.m_allocate(sizeof(variant_t::data_header_t)));
        *header = {0, 1};
        variant_t nothing;
        nothing.m_value.m_data = header + 1;
        nothing.m_type = type;
        variant_t empty = type == vtString ? variant_t("", true) : tagged(vtWStringRef, 0);
        EXPECT_TRUE(nothing == empty);
        EXPECT_FALSE(nothing < empty || empty < nothing);
        EXPECT_TRUE(type != vtString || *nothing.get<char const*>() == '\0');
        varo::Parser const parser;
        parser->option("to", "", vtString, "")
            ->allowValue(nothing)
            ->allowDeprecatedValue(nothing, "x")
            ->defaultValue(nothing);
        varo_test::check(
            parser,
            {{{}, varo::kSuccess, "", "to", type == vtString ? "default ''" : "default null"}});
    }
}

TEST_F(Variants, ReleaseAnObjectOnce) {
    Object object;
    object_t* const pointer = &object;
    // NOLINTNEXTLINE(bugprone-sizeof-expression): the block holds the pointer itself
    variant_t last = block(vtObject, &pointer, sizeof(pointer));
    variant_t alias = tagged(vtObject, last.m_value.m_signed);  // not counted
    object.m_alias = &alias;
    {
        variant_t const copy(last);
        EXPECT_TRUE(copy == last);
        last.free_data();
        EXPECT_EQ(object.m_released, 0);
    }
    EXPECT_EQ(object.m_released, 1);
    alias.m_type = vtNull;
}

/// An object whose release is an action of the test.
class Releaser final : public object_t {
public:
    explicit Releaser(std::function<void()> action) : m_action(std::move(action)) {}
    void retain() override {}
    void release() override { m_action(); }

    variant_t variant() {
        object_t* const pointer = this;
        // NOLINTNEXTLINE(bugprone-sizeof-expression): the block holds the pointer itself
        return block(vtObject, &pointer, sizeof(pointer));
    }

private:
    std::function<void()> m_action;
};

TEST_F(Variants, MayUseTheParserWhenTheirDeclarationIsReplaced) {
    varo::Parser const parser;
    Releaser declares([&] { parser->option("late,l", "Late", vtString, "")->defaultValue(2); });
    parser->option("early,e", "Early", vtString, "")->defaultValue(declares.variant());
    parser->setReplace(true);
    parser->option("early,e", "New", vtString, "")->defaultValue(1);
    varo_test::check(parser, {{{}, varo::kSuccess, "", "late", "default s32 2"},
                              {{}, varo::kSuccess, "", "early", "default s32 1"},
                              {{"-e=a", "-l=b"}, varo::kSuccess, "", "late", "'b'"}});

    // A handler replaces it; the end of the parse releases it, with the parser.
    varo::IParser* doomed = nullptr;
    ASSERT_EQ(varo::createParser(&doomed, 0), 0);
    doomed->setReplace(true);
    Releaser destroys([&] { std::exchange(doomed, nullptr)->destroy(); });
    doomed->option("a", "", vtString, "")->defaultValue(destroys.variant());
    doomed->option("b", "", vtS32, "");
    varo_test::RecordingHandler handler;
    handler.m_reaction = [&](std::string const&) {
        return doomed->option("a", "", vtString, "") != nullptr;
    };
    doomed->addHandler(&handler);
    EXPECT_EQ(doomed->parseStream("-b=1", nullptr), 0);
    EXPECT_EQ(doomed, nullptr);
}

TEST_F(Variants, MayParseIntoTheResultThatLosesThem) {
    varo::Parser const parser;
    parser->setReplace(true);
    varo::Result result = parser.createResult();
    std::string lines;
    for (int number = 0; number < 40; ++number) {
        std::string const name = "o" + std::to_string(number);
        parser->option(name.c_str(), "", vtString, "");
        lines += "--" + name + "=x\n";
    }
    Releaser parses([&] { parser->parseStream(lines.c_str(), result.interface()); });
    parser->option("a", "", vtString, "")->defaultValue(parses.variant());
    varo_test::parse(parser, result, {});
    parser->option("a", "", vtString, "")->defaultValue(5);
    varo_test::parse(parser, result, {});
    EXPECT_EQ(varo_test::contents(result, "a"), "default s32 5");
    EXPECT_EQ(varo_test::contents(result, "o39"), "'x'");
}

std::string g_checks;

TEST_F(Variants, ReportReadsOfAnotherKindAndGoOn) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(variant_t(1.0).get<int>(), 0);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("failed: can_get<s32_t>()"),
              std::string::npos);
    auto const oldHook = BRIX::debug::_private::assertion;
    BRIX::debug::_private::assertion = [](char const* check, char const* file, int line,
                                          char const* function) {
        EXPECT_NE(std::string(file).find("variant"), std::string::npos);
        EXPECT_GT(line, 0);
        EXPECT_NE(std::string(function), "");
        g_checks += std::string(check) + "; ";
    };
    g_checks.clear();
    variant_t const wideNumber(0x100000007LL), real(1.0);
    EXPECT_EQ(wideNumber.get<int>(), 7);
    EXPECT_EQ(wideNumber.get<unsigned>(), 7U);
    EXPECT_TRUE(real.get<bool>());
    EXPECT_EQ(real.get<long long>(), 0x3FF0000000000000LL);
    EXPECT_EQ(real.get<unsigned long long>(), 0x3FF0000000000000ULL);
    EXPECT_EQ(tagged(vtNull, real.m_value.m_signed).get<double>(), 1.0);
    EXPECT_EQ(kNull.get<char const*>(), nullptr);
    // Reads that are allowed report nothing.
    EXPECT_EQ(variant_t(~0ULL).get<double>(), 18446744073709551616.0);
    EXPECT_EQ(variant_t(-1).get<unsigned>(), 0xFFFFFFFFU);
    EXPECT_EQ(varo::Value("", 5, 0).as<char const*>(), nullptr);
    EXPECT_FALSE(tagged(19, 0) < tagged(19, 0));
    variant_t damaged = tagged(vtBlob, 0);
    EXPECT_TRUE(damaged == damaged);
    variant_t(damaged).free_data();
    damaged.free_data();
    EXPECT_EQ(damaged.m_type, vtNull);
    EXPECT_EQ(g_checks,
              "can_get<s32_t>(); can_get<u32_t>(); can_get<bool>(); can_get<s64_t>(); "
              "can_get<u64_t>(); can_get<double>(); can_get<const char*>(); "
              "m_type == vtNull && var.m_type == vtNull; m_value.m_data != NULL; "
              "m_value.m_data != NULL; m_value.m_data != NULL; h != NULL; m_value.m_data != NULL; "
              "m_value.m_data != NULL; ");
    BRIX::debug::_private::assertion = oldHook;
}

}  // namespace
