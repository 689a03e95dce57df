#include <fcntl.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <thread>

#include "support.h"

namespace {

using namespace mosaic2;
using namespace varo_test;

/// A parser that reads option files, with a positional option that shows all other arguments.
varo::Parser fileParser(varo::Flags flags = varo::kKeepCommas) {
    varo::Parser parser(flags);
    parser->option("n", "", vtS32, "");
    parser->option("word", "", vtString, "")->positional();
    EXPECT_TRUE(parser->addOptionFileOption("Reads more arguments", "general"));
    return parser;
}

std::string from(std::string const& path) {
    return "--option-file=" + path;
}

std::string unreadable(std::string const& path) {
    return "Error reading option file '" + path + "'";
}

TEST(Stream, HoldsOneArgumentPerLine) {
    varo::Parser const parser(varo::kKeepCommas);
    parser->option("word", "", vtString, "")->positional();
    struct Row {
        char const* text;
        char const* words;
    };
    for (Row const& row : {
             Row{nullptr, "absent"},
             Row{"", "absent"},
             Row{"\n \n\t\v\f\r\n;a\n  #b\n#", "absent"},
             Row{"a", "'a'"},
             Row{"a b\nc\n", "'a b' 'c'"},
             Row{" \t\v\fa \t\nb\r\r\n\rc\rd\r", "'a \t' 'b' 'c\rd'"},
             Row{"a #b\n\"c;\"\\\n-- \n", "'a #b' '\"c;\"\\' '-- '"},
             Row{"\xC2\xA0x\n\xEF\xBB\xBFy", "'\xC2\xA0x' '\xEF\xBB\xBFy'"},
             Row{"--word one\n--word=two\n--word\nthree", "'one' 'two' 'three'"},
         }) {
        SCOPED_TRACE(row.text != nullptr ? row.text : "null");
        varo::Result result = parser.createResult();
        EXPECT_EQ(parser->parseStream(row.text, result.interface()), kSuccess);
        EXPECT_EQ(contents(result, "word"), row.words);
    }
}

TEST(Stream, IsParsedWithoutDefaultsLikeArguments) {
    varo::Parser const parser(varo::kUnknownIsError);
    parser->option("level", "", vtS32, "")->defaultValue(3);
    varo::Result result = parser.createResult();
    EXPECT_EQ(parser->parseStream("tool\n", result.interface()), kParseError);
    EXPECT_STREQ(parser.error(), "Unknown option: tool");
    EXPECT_EQ(parser->parseStream("", result.interface()), kSuccess);
    EXPECT_STREQ(parser.error(), "");
    EXPECT_EQ(contents(result, "level"), "absent");
    Console const console;
    EXPECT_EQ(parser->parseStream("varooption=varologenable=1\n--\na\r\n", result.interface()),
              kSuccess);
    EXPECT_EQ(console.text(), "collectNonparsingArguments: stored argument: 'a'\n");
    EXPECT_EQ(parser->parseStream("--level=x", nullptr), kParseError);
}

TEST(OptionFiles, ContinueTheCommandLine) {
    Directory const directory;
    varo::Parser const parser = fileParser();
    std::string const file = directory.write("file", "b\n--\nplain\n");
    check(parser, {{{from(file), "a"}, kSuccess, "", "word", "'a' 'b'"},
                   {{from(file), "--", "p"}, kSuccess, "", "--", "p|plain|"}});
}

TEST(OptionFiles, FollowTheFilesBeforeThem) {
    Directory const directory;
    varo::Parser const parser = fileParser();
    std::string const leaf = directory.write("leaf", "leaf\n");
    std::string const nested = directory.write("nested", from(leaf) + "\nnested\n");
    std::string const other = directory.write("other", "other\n");
    check(parser, {{{from(nested), from(other)}, kSuccess, "", "word", "'nested' 'other' 'leaf'"},
                   {{from(leaf), from(nested)}, kSuccess, "", "word", "'leaf' 'nested' 'leaf'"}});
}

TEST(OptionFiles, MayComeFromOtherSystems) {
    Directory const directory;
    varo::Parser const parser = fileParser();
    std::string const file =
        directory.write("a,b", "\xEF\xBB\xBF--n=1\r\n# comment\r\n\r\na\xff\r\n--\r\n--n=9\r\n");
    check(parser, {{{from(file)}, kSuccess, "", "n", "s32 1"},
                   {{from(file)}, kSuccess, "", "word", "'a\xff'"},
                   {{from(file)}, kSuccess, "", "--", "--n=9|"}});
}

TEST(OptionFiles, AreReadByTheParseThatNamesThem) {
    Directory const directory;
    varo::Parser const parser = fileParser();
    std::string const file = directory.write("file", "a\n");
    varo::Result result = parser.createResult();
    EXPECT_EQ(parse(parser, result, {from(file)}), kSuccess);
    EXPECT_EQ(parse(parser, result, {"b"}), kSuccess);
    EXPECT_EQ(contents(result, "word"), "'a' 'b'");
    EXPECT_EQ(parse(parser, result, {from(file)}), kSuccess);
    EXPECT_EQ(contents(result, "word"), "'a' 'b' 'a'");
}

TEST(OptionFiles, ErrorsEndTheParseWhereTheyAre) {
    Directory const directory;
    varo::Parser const parser =
        fileParser(varo::kKeepCommas | varo::kDashGuard | varo::kUnknownIsError);
    std::string const bad = directory.write("bad", "--n=2\n--typo\n--n=3\n");
    std::string const withNul = directory.write("nul", std::string("--n=2\0\n--n=3\n", 13));
    std::string const missing = directory.path("missing");
    std::string const longName = directory.path(std::string(5000, 'x'));
    check(
        parser,
        {{{"--n=1", from(bad), from(missing)},
          kParseError,
          "Unknown option: --typo",
          "n",
          "s32 1 s32 2"},
         {{"--n=1", from(missing), "a"}, kOptionFileUnreadable, unreadable(missing), "word", "'a'"},
         {{from(directory.path("."))}, kOptionFileUnreadable, unreadable(directory.path("."))},
         {{from(longName)}, kOptionFileUnreadable, unreadable(longName)},
         {{from(withNul)}, kOptionFileUnreadable, unreadable(withNul), "n", "absent"},
         {{"--option-file", ""}, kSuccess, ""},
         // A size of 0 does not mean an empty file.
         {{from("/proc/sys/kernel/ostype")}, kSuccess, "", "word", "'Linux'"}});
}

TEST(OptionFiles, MayNotIncludeThemselves) {
    Directory const directory;
    varo::Parser const parser = fileParser();
    std::string const link = directory.path("link");
    std::string const file = directory.write("file", "--n=1\n" + from(link) + "\n");
    std::filesystem::create_symlink("file", link);
    std::string const around = directory.path("./a");
    std::string const a = directory.write("a", from(directory.path("b")));
    directory.write("b", from(around));
    std::string const twice = directory.write("twice", from(directory.path("leaf")));
    directory.write("leaf", "w\n");
    check(parser,
          {{{from(file)},
            kOptionFileUnreadable,
            "Option file '" + link + "' includes itself",
            "n",
            "s32 1"},
           {{from(a)}, kOptionFileUnreadable, "Option file '" + around + "' includes itself"},
           {{from(twice), from(twice), from(directory.path("leaf"))},
            kSuccess,
            "",
            "word",
            "'w' 'w' 'w'"}});
}

TEST(OptionFiles, AreLimitedInNumberAndLeaveNothingOpen) {
    Directory const directory;
    varo::Parser const parser = fileParser();
    std::string const leaf = directory.write("f12", "--n=1\n");
    for (int index = 11; index >= 0; --index) {
        std::string const line = from(directory.path("f" + std::to_string(index + 1))) + "\n";
        directory.write("f" + std::to_string(index), line + line);
    }
    auto const openFiles = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    auto const before = openFiles();
    varo::Result result = parser.createResult();
    EXPECT_EQ(parse(parser, result, Arguments(1000, from(leaf))), kSuccess);
    EXPECT_EQ(parse(parser, result, Arguments(1001, from(leaf))), kOptionFileUnreadable);
    EXPECT_EQ(parser.error(), unreadable(leaf));
    EXPECT_EQ(parse(parser, result, {from(directory.path("f0"))}), kOptionFileUnreadable);
    EXPECT_EQ(parse(parser, result, {from("/dev/zero")}), kOptionFileUnreadable);
    std::string comment = "#";
    comment.resize(90'000'000, 'x');
    std::string const large = directory.write("large", comment);
    EXPECT_EQ(parse(parser, result, {from(large), from(large)}), kSuccess);
    EXPECT_EQ(parse(parser, result, {from(large), from(large), from(large)}),
              kOptionFileUnreadable);
    for (int index = 0; index < 100; ++index) {
        EXPECT_EQ(parse(parser, result, {from(directory.path("."))}), kOptionFileUnreadable);
        EXPECT_EQ(parse(parser, result, {from(directory.path("missing"))}), kOptionFileUnreadable);
    }
    EXPECT_EQ(openFiles(), before);
}

/// Interrupts a thread for some milliseconds, with a signal that ends its system calls early.
void interrupt(pthread_t thread) {
    for (int count = 0; count < 10; ++count) {
        pthread_kill(thread, SIGUSR1);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

/// Whether programs that are started now inherit a descriptor of this file other than `own`.
bool isInherited(std::string const& path, int own) {
    bool isInherited = false;
    for (auto const& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        int const descriptor = std::stoi(entry.path().filename());
        std::error_code isGone;
        if (descriptor != own && std::filesystem::read_symlink(entry.path(), isGone) == path) {
            isInherited = isInherited || (fcntl(descriptor, F_GETFD) & FD_CLOEXEC) == 0;
        }
    }
    return isInherited;
}

TEST(OptionFiles, AreReadInSpiteOfSignalsAndNotInherited) {
    Directory const directory;
    varo::Parser const parser = fileParser();
    std::string const path = directory.path("fifo");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    struct sigaction action {};
    action.sa_handler = [](int) {};
    sigaction(SIGUSR1, &action, nullptr);
    std::thread writer([&path, reader = pthread_self()] {
        interrupt(reader);  // which waits for this end to be opened
        int const file = open(path.c_str(), O_RDWR | O_CLOEXEC);  // does not wait for the reader
        interrupt(reader);  // which waits for something to read
        EXPECT_FALSE(isInherited(path, file));
        EXPECT_EQ(write(file, "--n=1\n", 6), 6);
        interrupt(reader);
        close(file);
    });
    varo::Result result = parser.createResult();
    EXPECT_EQ(parse(parser, result, {from(path)}), kSuccess) << parser.error();
    EXPECT_EQ(contents(result, "n"), "s32 1");
    writer.join();
}

TEST(OptionFiles, NeedTheirDeclarationOrTheHosts) {
    Directory const directory;
    std::string const file = directory.write("file", "--n=1\n");
    std::string const other = directory.write("other", "--n=2\n");
    varo::Parser const own(varo::kUnknownIsError);
    own->option("n", "", vtS32, "");
    check(own, {{{from(file)}, kParseError, "Unknown option: " + from(file)}});
    own->option("option-file,f", "", vtString, "")->defaultValue(other.c_str());
    check(own, {{{from(file)}, kSuccess, "", "n", "absent"}});
    EXPECT_FALSE(own->addOptionFileOption("", ""));
    check(own, {{{"-f", other + "," + file}, kSuccess, "", "n", "s32 2 s32 1"},
                {{"--n=5"}, kSuccess, "", "n", "s32 5 s32 2"}});
    own->setReplace(true);
    own->option("option-file,f", "", vtString, "")->defaultValue("");
    check(own, {{{"--n=5"}, kOptionFileUnreadable, unreadable(""), "n", "s32 5"}});

    varo::Parser const numbers;
    numbers->option("option-file", "", vtS32, "");
    numbers->addOptionFileOption("", "");
    check(numbers, {{{"--option-file=5,6"}, kSuccess, "", "option-file", "s32 5 s32 6"}});
}

}  // namespace
