// The program that scripts/check-shells completes: values and descriptions that shells stumble on.
#include <varo/completion.h>

#include <cstdio>
#include <cstring>
#include <string>

namespace {

class Source final : public varo::ValueSource {
public:
    void offer(char const* name, char const* typed, varo::ValueOffers& offers) override {
        if (std::strcmp(name, "save") == 0) {
            offers.files();
        } else if (std::strcmp(name, "into") == 0) {
            offers.directories();
        } else if (std::strcmp(name, "host") == 0) {
            offers.value("alpha", "the first: $(touch owned) 'quoted' \"too\" [x] `touch owned`");
            offers.value("beta", nullptr);
        } else if (std::strcmp(name, "crash") == 0 && *typed == 'x') {
            std::abort();
        }
    }
};

}  // namespace

int main(int argc, char** argv) {
    varo::Parser parser(varo::kUnknownIsError | varo::kDashGuard | varo::kDoubleDashHelp);
    parser->action("scan", "Scan things", mosaic2::vtNull, "");
    parser->action("report", "Report", mosaic2::vtNull, "");
    parser->modifier("path", "scan", "", mosaic2::vtString, "")->positional()->tokenize(0);
    parser
        ->modifier("odd,o", "scan,report", "It's \"odd\": [$(touch owned)] `touch owned`; 100%",
                   mosaic2::vtString, "")
        ->tokenize(0)
        ->allowValue("a:b")
        ->allowValue("a:c=d")
        ->allowValue("x::Y")
        ->allowValue("it's")
        ->allowValue("q\"uote")
        ->allowValue("a b$c");
    parser->modifier("depth", "scan", "Levels", mosaic2::vtU32, "");
    parser->modifier("format", "report", "How to print", mosaic2::vtString, "")
        ->allowValue("table")
        ->allowValue("csv")
        ->allowValue("json");
    parser->modifier("save", "scan,report", "A file", mosaic2::vtString, "")->tokenize(0);
    parser->modifier("into", "scan", "A directory", mosaic2::vtString, "");
    parser->modifier("host", "scan", "From the program", mosaic2::vtString, "");
    parser->modifier("crash", "scan", "Ends the program", mosaic2::vtString, "");
    parser->option("verbose,v", "Say more", mosaic2::vtBool, "");
    parser->addOptionFileOption("Arguments from a file", "");
    for (int number = 0; number < 400; ++number) {
        parser->option(("zz-" + std::to_string(number)).c_str(), "One of many", mosaic2::vtBool,
                       "");
    }
    Source source;
    if (auto status = varo::answerShell(parser, argc, argv, &source)) {
        return *status;
    }
    for (int index = 1; index < argc; ++index) {
        std::printf("[%s]", argv[index]);
    }
    std::printf("\n");
}
