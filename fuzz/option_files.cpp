// A text and up to three option files, all from the input, that may name one another. Names with a
// slash are refused, so nothing is read but what this target wrote into its own directory.

#include <fcntl.h>
#include <unistd.h>

#include "event_recorder.h"

namespace {

class FileRecorder final : public fuzz::EventRecorder {
public:
    using EventRecorder::EventRecorder;

private:
    bool isAcceptable(char const* name, varo::Value const& value) override {
        return name != std::string_view("option-file") ||
               (std::string_view(value.text()).find('/') == std::string_view::npos &&
                ++m_files <= 12);
    }

    unsigned m_files = 0;
};

/// Goes to a new directory in memory. Its files "a", "b" and "c" stay open and are rewritten.
struct Directory {
    Directory() {
        REQUIRE(mkdtemp(m_path) != nullptr && chdir(m_path) == 0);
        for (int i = 0; i < 3; ++i) {
            m_files[i] = open(m_names[i], O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
        }
    }
    ~Directory() {
        for (char const* const name : m_names) {
            unlink(name);
        }
        rmdir(m_path);
    }

    char m_path[32] = "/dev/shm/varo-fuzz-XXXXXX";
    char const* m_names[3] = {"a", "b", "c"};
    int m_files[3];
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static Directory const directory;
    fuzz::Input input(data, size);
    varo::Parser const parser(input.flags());
    varo::Result const result = parser.createResult();
    FileRecorder recorder(input.number());
    parser->addHandler(&recorder);
    parser->addOptionFileOption("", "");
    parser->option("number,n", "", mosaic2::vtS32, "");
    parser->option("word", "", mosaic2::vtString, "")->positional();
    for (char const* const name : {"option-file", "number", "word"}) {
        recorder.watch(name);
    }
    for (int const file : directory.m_files) {
        std::string const text = input.text('\xFF');
        REQUIRE(pwrite(file, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()));
        REQUIRE(ftruncate(file, static_cast<off_t>(text.size())) == 0);
    }
    std::string const text = input.text('\xFF');
    int const code = fuzz::checkedParse(
        parser, [&] { return parser->parseStream(text.c_str(), result.interface()); });
    recorder.check(code, parser, result);
    return 0;
}
