// Adds up its arguments, on the bare interface: no exceptions, no handles, everything by hand.
//
//     bare 1 2.5 --scale=10     writes 35
//     bare 1 -- -4              writes -3: after "--" an argument may begin with "-"

#include <varo/parser.h>
#include <cstdio>

using namespace varo_3_3;

namespace {

/// An empty argument is stored as an occurrence without a value.
double numberOf(Value const& value, double otherwise) {
    return value.value().can_get<double>() ? value.as<double>() : otherwise;
}

}  // namespace

int main(int argc, char** argv) {
    IParser* parser = nullptr;
    if (createParser(&parser, kUnknownIsError | kDashGuard | kPositionalAfterMarker) != kSuccess) {
        return 1;
    }
    IParseResult* result = nullptr;
    if (parser->createResult(&result) != kSuccess) {
        parser->destroy();
        return 1;
    }

    parser->option("number", "What to add up", mosaic2::vtDouble, "")->positional();
    parser->option("scale,s", "What to multiply the sum by", mosaic2::vtDouble, "")
        ->defaultValue(1.0);

    int const code = parser->parseArgsVector(argc, argv, result);
    if (code == kSuccess) {
        // get() names the range and gives its first value; next() walks on to kNoPosition.
        double sum = 0.0;
        for (Value value = result->get("number", kFirstPosition, kNoPosition);
             value.position() != kNoPosition; value = result->next("number")) {
            sum += numberOf(value, 0.0);
        }
        Value const scale = getLastValue(result, "scale", kFirstPosition, kNoPosition);
        std::printf("%g\n", sum * numberOf(scale, 1.0));
    } else {
        std::fprintf(stderr, "bare: %s\n", parser->getErrorDesc());
    }

    result->destroy();
    parser->destroy();
    return code == kSuccess ? 0 : 2;
}
