// Different parsers in different threads. Built for ThreadSanitizer too, which sees every race.

#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <thread>

#include "recognizers/positions.h"
#include "support.h"

namespace {

using namespace mosaic2;
using namespace varo_test;

/// Takes what is written from any thread, and drops it.
class Dropping final : public std::streambuf {
    std::streamsize xsputn(char const*, std::streamsize size) override { return size; }
    int overflow(int character) override { return traits_type::not_eof(character); }
};

/// The positions of all occurrences and values that a parse stored, in the order of its arguments.
class Positions final : public varo::EventHandler {
public:
    bool onValueParse(char const*, varo::Value const& value) override {
        m_areAscending = m_areAscending && value.position() > m_last;
        m_last = value.position();
        return true;
    }

    bool m_areAscending = true;
    int m_last = -1;
};

/// What one thread does: parses of its own parser, every second one traced if `isTracing`.
void parseRepeatedly(bool isTracing) {
    varo::Parser const parser(varo::kUnknownIsError);
    parser->option("level,l", "", vtS32, "")->defaultValue(3);
    parser->option("list", "", vtString, "")->allowValue("alpha")->allowValue("beta");
    parser->option("word", "", vtString, "")->positional();
    Positions positions;
    parser->addHandler(&positions);
    Arguments const arguments{"--level=1", "a,b", "--list=al,be", "--lev", "2", "c", "--", "d"};
    for (int repetition = 0; repetition < 300; ++repetition) {
        Arguments line = arguments;
        if (isTracing && repetition % 2 == 0) {
            line.insert(line.begin(), "varooption=varologenable=1");
        }
        varo::Result result = parser.createResult();
        ASSERT_EQ(parse(parser, result, line), kSuccess);
        ASSERT_TRUE(positions.m_areAscending);
        ASSERT_EQ(contents(result, "word"), "'a' 'b' 'c'");
        int const first = result.interface()->get("level", 0, varo::kNoPosition).position();
        int const second =
            varo::getLastValue(result.interface(), "level", 0, varo::kNoPosition).position();
        ASSERT_EQ(contents(result, "list", first, second), "'alpha' 'beta'");
        ASSERT_EQ(contents(result, "word", first, second), "'a' 'b'");
        ASSERT_EQ(contents(result, "word", second), "'c'");
        ASSERT_EQ(parse(parser, result, {"--list=gamma"}), kParseError);
        ASSERT_STRNE(parser.error(), "");
    }
}

TEST(Threads, ParseAtOnceWithAscendingPositions) {
    Dropping dropping;
    std::streambuf* const old = BRIX::ucout.rdbuf(&dropping);
    std::vector<std::thread> threads;
    for (bool const isTracing : {true, false, true, false}) {
        threads.emplace_back(parseRepeatedly, isTracing);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    BRIX::ucout.rdbuf(old);

    int next = varo::kNoPosition - 2;  // from the first thread on, positions are taken atomically
    EXPECT_EQ(varo_3_3::internal::takePosition(next), varo::kNoPosition - 2);
    EXPECT_EQ(varo_3_3::internal::takePosition(next), varo::kNoPosition - 1);
    EXPECT_EQ(varo_3_3::internal::takePosition(next), varo::kNoPosition - 1);
}

/// Waits forever in the middle of a line.
class Waiting final : public std::streambuf {
    std::streamsize xsputn(char const*, std::streamsize) override {
        m_isReached = true;
        for (;;) {
            pause();
        }
    }

public:
    std::atomic<bool> m_isReached = false;
};

TEST(Threads, AreCancelledInTheMiddleOfATrace) {
    Waiting waiting;
    std::streambuf* const old = BRIX::ucout.rdbuf(&waiting);
    pthread_t thread{};
    auto const parseTraced = [](void*) -> void* {
        varo::Parser const parser;
        varo::Result result = parser.createResult();
        parse(parser, result, {"varooption=varologenable=1", "--level=1"});
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, nullptr, parseTraced, nullptr), 0);
    while (!waiting.m_isReached) {
        std::this_thread::yield();
    }
    pthread_cancel(thread);
    void* outcome = nullptr;
    pthread_join(thread, &outcome);
    EXPECT_EQ(outcome, PTHREAD_CANCELED);
    BRIX::ucout.rdbuf(old);
    BRIX::ucout.clear();
    varo_3_3::internal::varoLogEnabled = false;
}

}  // namespace
