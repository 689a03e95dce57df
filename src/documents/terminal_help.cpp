#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <exception>

#include "documents/outline.h"
#include "documents/printable.h"
#include "documents/sized.h"
#include "documents/terminal_page.h"

namespace varo_3_3 {
namespace {

using namespace internal;

constexpr int kUsualColumns = 80;
constexpr int kFewestColumns = 20;
constexpr int kMostColumns = 10000;
constexpr int kEntryColumn = 2;
constexpr int kFurtherLines = 6;  // of what stands in front of a description
constexpr int kDescriptionColumn = 30;

int columnsOf(HelpLayout const& layout) {
    int columns = layout.columns;
    if (columns == 0) {
        winsize size{};
        bool const isTerminal = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col != 0;
        columns = isTerminal ? size.ws_col : kUsualColumns;
    }
    return std::clamp(columns, kFewestColumns, kMostColumns);
}

std::string bold(std::string_view text) {
    std::string marked(1, TerminalPage::kBold);
    marked += text;
    marked += TerminalPage::kPlain;
    return marked;
}

/// What stands in front of a description: "-l, --level=<integer> (3)".
std::string captionOf(Outline const& outline, Declaration const& declaration) {
    std::string caption;
    auto const addBold = [&](auto addForm) {
        caption += TerminalPage::kBold;
        addForm();
        caption += TerminalPage::kPlain;
    };
    for (int number = declaration.nameCount; number-- > 0;) {
        addBold([&] { outline.addDashed(caption, declaration.names[number]); });
        caption += number != 0 ? ", " : "";
    }
    if (declaration.type != mosaic2::vtBool) {
        addValueForm(caption, declaration);
        std::size_t const end = caption.size();
        outline.addDefault(caption, declaration);
        if (caption.size() != end) {
            caption.insert(end, " (");
            caption += ')';
        }
        return caption;
    }
    mosaic2::variant_t const* const value = declaration.defaultValue.value;
    bool const hasDefault = value != nullptr && value->can_get<bool>();
    caption += hasDefault && value->get<bool>() ? " (default) | " : " | ";
    addBold([&] { outline.addNegated(caption, declaration); });
    caption += hasDefault && !value->get<bool>() ? " (default)" : "";
    return caption;
}

void addUsage(TerminalPage& page, std::string_view lines, std::string_view program) {
    bool isFirst = true;
    while (!lines.empty()) {
        constexpr std::string_view kUsage = "Usage:";
        constexpr int kColumn = static_cast<int>(kUsage.size()) + 1;
        page.words(isFirst ? bold(kUsage) : "", 0);
        page.moveTo(kColumn);
        page.words(program, kColumn);
        page.words(takeLine(lines), kColumn + kEntryColumn);
        page.endLine();
        isFirst = false;
    }
}

void addHeading(TerminalPage& page, std::string_view heading) {
    if (!page.isEmpty()) {
        page.endLine();
    }
    page.text(bold(heading), 0);
}

std::string headingOf(Outline const& outline, Outline::Entry const& entry) {
    std::string heading = outline.heading(entry);
    if (heading.find_first_not_of(' ') == std::string::npos) {
        heading = entry.part == Outline::kActions ? "Actions" : "Options";
    }
    return heading;
}

std::string write(BasicParser& parser, HelpLayout const& layout) {
    Outline const outline(parser, layout.hidden != 0, layout.topic);
    int const columns = columnsOf(layout);
    int const descriptionColumn = std::min(kDescriptionColumn, columns * 3 / 8);
    TerminalPage page(columns, layout.emphasis != 0);
    addUsage(page, outline.usage(), printableLine(textOf(layout.program)));
    for (std::size_t number = 0; number < outline.entries().size(); ++number) {
        Outline::Entry const& entry = outline.entries()[number];
        if (outline.beginsGroup(number)) {
            addHeading(page, headingOf(outline, entry));
            if (entry.part == Outline::kOptions) {
                page.text(printable(entry.declaration->sectionText), kEntryColumn);
            }
        }
        page.moveTo(kEntryColumn);
        page.words(captionOf(outline, *entry.declaration), kFurtherLines);
        std::string const description = printable(entry.declaration->description);
        if (description.find_first_not_of(" \n") == std::string::npos) {
            page.endLine();
        }
        page.text(description, descriptionColumn);
        if (outline.endsActions(number)) {
            page.text(outline.together(), kEntryColumn);
        }
    }
    return page.take();
}

}  // namespace

char const* helpText(IParser* parser, HelpLayout const* layout) {
    BasicParser* const ours = basicParserOf(parser);
    if (ours == nullptr) {
        return "";
    }
    try {
        return ours->texts().init(write(*ours, knownPart(layout)));
    } catch (std::exception const&) {  // no memory
        return "";
    }
}

}  // namespace varo_3_3
