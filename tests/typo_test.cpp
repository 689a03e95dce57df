#include "assist/typo.h"

#include <algorithm>
#include <random>

#include "support.h"
#include "varo/assist.h"

using namespace mosaic2;
using namespace varo_test;

namespace {

using Names = std::vector<std::string>;

Names readNames(std::string const& list) {
    std::ifstream file(VARO_TEST_NAMES "/" + list + ".txt");
    Names names;
    for (std::string name; file >> name;) {
        names.push_back(name);
    }
    return names;
}

bool isKnown(Names const& names, std::string const& word) {
    return std::any_of(names.begin(), names.end(),
                       [&](std::string const& name) { return name.rfind(word, 0) == 0; });
}

/// All words one edit away, by letters and "-".
Names typosOf(std::string const& word) {
    constexpr std::string_view kBytes = "abcdefghijklmnopqrstuvwxyz-";
    Names typos;
    for (std::size_t at = 0; at <= word.size(); ++at) {
        for (char const byte : kBytes) {
            typos.push_back(word.substr(0, at) + byte + word.substr(at));
            if (at < word.size()) {
                typos.push_back(word.substr(0, at) + byte + word.substr(at + 1));
            }
        }
        if (at < word.size()) {
            typos.push_back(word.substr(0, at) + word.substr(at + 1));
        }
        if (at + 1 < word.size()) {
            typos.push_back(word);
            std::swap(typos.back()[at], typos.back()[at + 1]);
        }
    }
    return typos;
}

/// How often, in percent, the name comes first for typos of the words. Every 29th typo is tried.
class Hits {
public:
    Hits(varo::Parser const& parser, Names const& names) : m_parser(parser), m_names(names) {}

    void tryTypos(std::string const& word, std::string const& name) {
        for (std::string const& typo : typosOf(word)) {
            if (++m_drawn % 29 == 0 && typo.size() > 1 && typo[0] != '-' &&
                !isKnown(m_names, typo)) {
                ++m_tried;
                std::string const text = suggest(typo);
                m_hits += text.rfind("Did you mean '--" + name + "'", 0) == 0 ? 1 : 0;
            }
        }
    }

    std::string suggest(std::string const& word) const {
        varo::Result result;
        EXPECT_EQ(parse(m_parser, result, {"--" + word}), varo::kParseError);
        return varo::suggestion(m_parser.interface());
    }

    double percent() const { return 100.0 * m_hits / m_tried; }

private:
    varo::Parser const& m_parser;
    Names const& m_names;
    int m_drawn = 0;
    int m_tried = 0;
    int m_hits = 0;
};

}  // namespace

TEST(Typo, CountsEditsOfAWord) {
    using varo_3_3::internal::Typo;
    std::mt19937 random(3);
    auto const word = [&] {
        std::string text(random() % 12, '\0');
        std::generate(text.begin(), text.end(), [&] { return "ab-c"[random() % 4]; });
        return text;
    };
    for (int round = 0; round < 20'000; ++round) {
        std::string const typed = word();
        std::string const name = word();
        // The table that the bits represent, with the best beginning in its last row.
        std::vector<std::vector<unsigned>> edits(typed.size() + 1,
                                                 std::vector<unsigned>(name.size() + 1));
        for (std::size_t i = 0; i <= typed.size(); ++i) {
            for (std::size_t j = 0; j <= name.size(); ++j) {
                unsigned& here = edits[i][j];
                here = static_cast<unsigned>(i + j);
                if (i > 0 && j > 0) {
                    here = std::min({edits[i - 1][j] + 1, edits[i][j - 1] + 1,
                                     edits[i - 1][j - 1] + (typed[i - 1] != name[j - 1] ? 1 : 0)});
                }
                if (i > 1 && j > 1 && typed[i - 1] == name[j - 2] && typed[i - 2] == name[j - 1]) {
                    here = std::min(here, edits[i - 2][j - 2] + 1);
                }
            }
        }
        std::size_t const size = typed.size();
        unsigned const most = size < 2 ? 0 : size <= 4 ? 1 : size <= 8 ? 2 : 3;
        unsigned const mostOfBeginning = size < 4 ? 0 : size <= 8 ? 1 : 2;
        auto const& last = edits.back();
        unsigned const beginning = *std::min_element(last.begin(), last.end());
        unsigned expected = last.back() <= most ? 4 * last.back() : Typo::kFar;
        if (beginning <= mostOfBeginning) {
            expected = std::min(expected, 4 * beginning + 2);
        }
        expected = size == 0 || name.size() < 2 ? Typo::kFar : expected;
        if (expected != Typo::kFar) {
            expected += typed[0] != name[0] ? 1 : 0;
        }
        ASSERT_EQ(Typo(typed).rank(name), expected) << typed << " " << name;
    }
    EXPECT_EQ(Typo(std::string(10'000, 'a')).rank(std::string(9'996, 'a')), Typo::kFar);
    EXPECT_NE(Typo(std::string(10'000, 'a')).rank(std::string(9'997, 'a')), Typo::kFar);
}

TEST(Typo, OfNamesOfRealToolsAreUnderstood) {
    for (char const* list : {"dirstat", "tar", "wget", "curl"}) {
        SCOPED_TRACE(list);
        Names const names = readNames(list);
        ASSERT_FALSE(names.empty());
        varo::Parser parser(varo::kUnknownIsError);
        for (std::string const& name : names) {
            parser->option(name.c_str(), "", vtString, "");
        }
        Hits whole(parser, names);
        Hits abbreviated(parser, names);
        for (std::string const& name : names) {
            whole.tryTypos(name, name);
            for (std::size_t size = 3; size < name.size(); ++size) {
                std::string const beginning = name.substr(0, size);
                if (std::count_if(names.begin(), names.end(), [&](std::string const& other) {
                        return other.rfind(beginning, 0) == 0;
                    }) == 1) {
                    abbreviated.tryTypos(beginning, name);
                }
            }
        }
        EXPECT_GE(whole.percent(), 99);
        EXPECT_GE(abbreviated.percent(), 92);
        RecordProperty(std::string(list) + "Names", std::to_string(whole.percent()));
        RecordProperty(std::string(list) + "Abbreviations", std::to_string(abbreviated.percent()));

        std::mt19937 random(7);
        int tried = 0;
        int suggested = 0;
        for (int round = 0; round < 2000; ++round) {
            std::string word(2 + random() % 11, '\0');
            std::generate(word.begin(), word.end(),
                          [&] { return static_cast<char>('a' + random() % 26); });
            if (!isKnown(names, word)) {
                ++tried;
                suggested += whole.suggest(word).empty() ? 0 : 1;
            }
        }
        EXPECT_LE(suggested * 10, tried);
        RecordProperty(std::string(list) + "Random", std::to_string(100.0 * suggested / tried));
    }
}
