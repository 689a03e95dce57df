#include <algorithm>
#include <random>
#include <set>

#include "support.h"

namespace {

using namespace varo_test;

bool shareOne(std::set<std::string> const& left, std::set<std::string> const& right) {
    return std::any_of(left.begin(), left.end(),
                       [&](std::string const& item) { return right.count(item) != 0; });
}

/// What a plain list of declarations answers when it is searched from the front every time.
class Model {
public:
    struct Record {
        std::vector<std::string> names;
        std::set<std::string> tags;
        bool isBoolean;
        std::string mark;  // its only allowed value
    };

    Record* find(std::string const& name, std::set<std::string> const& tags) {
        for (Record& record : m_records) {
            for (std::string const& own : record.names) {
                if ((name == own || (record.isBoolean && name == "no-" + own)) &&
                    (tags.empty() || shareOne(record.tags, tags))) {
                    return &record;
                }
            }
        }
        return nullptr;
    }

    /// Null when the declaration is refused.
    Record* declare(Record const& record, bool replace) {
        for (std::string const& name : record.names) {
            if (Record* const found = find(name, record.tags)) {
                return replace ? &(*found = record) : nullptr;
            }
        }
        return &m_records.emplace_back(record);
    }

    /// The error for "--TYPED=x".
    std::string answer(std::string const& typed) {
        std::vector<std::string> equal, longer;
        for (Record const& record : m_records) {
            for (std::string const& own : record.names) {
                for (std::string const& name : {own, "no-" + own}) {
                    if (name.compare(0, typed.size(), typed) == 0 &&
                        (record.isBoolean || name == own)) {
                        (name == typed ? equal : longer).push_back(name);
                    }
                }
            }
        }
        std::vector<std::string> const& best = equal.empty() ? longer : equal;
        std::string const argument = "--" + typed + "=x";
        if (best.empty()) {
            return "Unknown option: " + argument;
        }
        Record const* const first = find(best.front(), {});
        if (best.size() > 1 &&
            (isConflict(*first) || std::count(best.begin(), best.end(), best.front()) == 1)) {
            std::string list;
            for (std::string const& name : best) {
                list += (list.empty() ? "'" : ", '") + name + "'";
            }
            return "Ambiguous option '" + typed + "' in argument: '" + argument +
                   "', could be: " + list;
        }
        std::string const name = "Option '" + first->names.front();
        if (first->isBoolean) {
            return name +
                   "' is boolean and should be declared in form '--option' or '--no-option' in "
                   "argument: '" +
                   argument + "'";
        }
        return "Value validation problem in argument '" + argument + "': " + name +
               "' does not allow value 'x'. Possible values follows: '" + first->mark + "'";
    }

private:
    bool isConflict(Record const& first) const {
        return std::any_of(m_records.begin(), m_records.end(), [&](Record const& record) {
            return &record > &first && record.names == first.names &&
                   shareOne(record.tags, first.tags);
        });
    }

    std::vector<Record> m_records;
};

/// Makes `steps` declarations with some of these words as names, and compares the answers to
/// beginnings of all words after each.
void play(unsigned seed, int steps, std::vector<std::string> const& words) {
    char const* const tags[] = {"", "t", "u", "tu", "v"};
    std::mt19937 random(seed);
    auto const pick = [&](auto const& from) -> std::string {
        return from[random() % std::size(from)];
    };
    auto const list = [](std::string const& letters, std::set<std::string>& items) {
        std::string text;
        for (char const letter : letters) {
            items.emplace(1, letter);
            text += std::string(text.empty() ? "" : ",") + letter;
        }
        return text;
    };
    Model model;
    varo::Parser const parser(varo::kUnknownIsError);
    varo::IOption* const placeholder = parser->option(nullptr, "", mosaic2::vtNull, "");
    for (int step = 0; step < steps; ++step) {
        Model::Record record{{pick(words)}, {}, random() % 2 == 0, std::to_string(step)};
        std::string names = record.names.front();
        if (random() % 3 == 0) {
            record.names.push_back(pick(words));
            names += "," + record.names.back();
        }
        std::string const owners = list(pick(tags), record.tags);
        bool const replace = random() % 4 == 0;
        parser->setReplace(replace);
        Model::Record* const expected = model.declare(record, replace);
        varo::IOption* const option =
            parser->modifier(names.c_str(), owners.empty() ? nullptr : owners.c_str(), "",
                             record.isBoolean ? mosaic2::vtBool : mosaic2::vtString, "");
        SCOPED_TRACE(testing::Message() << "seed " << seed << " step " << step << " " << names);
        ASSERT_EQ(option == placeholder, expected == nullptr);
        option->allowValue(record.mark.c_str());
        if (expected != nullptr && random() % 3 == 0) {
            expected->names.push_back(pick(words));
            option->synonym(expected->names.back().c_str());
            std::string const more = list(pick(tags), expected->tags);
            option->tag(more.empty() ? nullptr : more.c_str());
        }
        for (std::string const& word : words) {
            std::string const typed = word.substr(0, 1 + random() % word.size());
            varo::Result none;
            parse(parser, none, {"--" + typed + "=x"});
            ASSERT_EQ(parser.error(), model.answer(typed));
        }
    }
}

TEST(Names, AreFoundAsInAPlainList) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        play(seed, 12,
             {"a", "b", "ab", "aba", "abb", "no", "n", "no-a", "no-ab", "no-no-a", "abababab",
              "ababababa", "ababababb", "no-abababab"});
    }
}

TEST(Names, AreFoundAmongManyWithOneBeginning) {
    std::vector<std::string> words;
    for (char first = 'a'; first <= 'j'; ++first) {
        for (char second = 'a'; second <= 'j'; ++second) {
            words.push_back(std::string("na") + first + second);
        }
    }
    for (unsigned seed = 0; seed < 4; ++seed) {
        play(seed, 80, words);
    }
}

}  // namespace
