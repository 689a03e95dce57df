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

/// Writes the help for a terminal.
class TerminalHelp {
public:
    TerminalHelp(BasicParser& parser, HelpLayout const& layout)
        : m_program(textOf(layout.program)),
          m_columns(columnsOf(layout)),
          m_outline(parser, layout.hidden != 0, layout.topic),
          m_page(m_columns, layout.emphasis != 0) {}

    std::string write() {
        int const descriptionColumn = std::min(kDescriptionColumn, m_columns * 3 / 8);
        writeUsage();
        for (std::size_t number = 0; number < m_outline.size(); ++number) {
            Declaration const& declaration = m_outline.declaration(number);
            if (m_outline.beginsGroup(number)) {
                writeHeading(number);
            }
            m_page.moveTo(kEntryColumn);
            writeCaption(declaration);
            m_text.clear();
            addPrintable(m_text, declaration.description);
            if (m_text.find_first_not_of(" \n") == std::string::npos) {
                m_page.endLine();
            }
            m_page.text(m_text, descriptionColumn);
            if (m_outline.endsActions(number)) {
                m_text.clear();
                m_outline.addTogether(m_text);
                m_page.text(m_text, kEntryColumn);
            }
        }
        return m_page.take();
    }

private:
    void writeUsage() {
        constexpr std::string_view kUsage = "\1Usage:\2";
        static_assert(kUsage.front() == TerminalPage::kBold &&
                      kUsage.back() == TerminalPage::kPlain);
        constexpr int kColumn = static_cast<int>(kUsage.size()) - 1;
        std::string program;
        addPrintableLine(program, m_program);
        m_outline.addUsage(m_text);
        std::string_view lines = m_text;
        for (bool isFirst = true; !lines.empty(); isFirst = false) {
            m_page.words(isFirst ? kUsage : "", 0);
            m_page.moveTo(kColumn);
            m_page.words(program, kColumn);
            m_page.words(takeLine(lines), kColumn + kEntryColumn);
            m_page.endLine();
        }
    }

    void writeHeading(std::size_t number) {
        Outline::Part const part = m_outline.part(number);
        m_text = TerminalPage::kBold;
        m_outline.addHeading(m_text, number);
        if (m_text.find_first_not_of(' ', 1) == std::string::npos) {
            m_text.resize(1);
            m_text += part == Outline::kActions ? "Actions" : "Options";
        }
        m_text += TerminalPage::kPlain;
        if (!m_page.isEmpty()) {
            m_page.endLine();
        }
        m_page.text(m_text, 0);
        if (part == Outline::kOptions) {
            m_text.clear();
            addPrintable(m_text, m_outline.declaration(number).sectionText);
            m_page.text(m_text, kEntryColumn);
        }
    }

    /// Writes what stands in front of a description: "-l, --level=<integer> (3)".
    void writeCaption(Declaration const& declaration) {
        m_text.clear();
        for (int number = declaration.nameCount; number-- > 0;) {
            m_text += TerminalPage::kBold;
            m_outline.addDashed(m_text, declaration.names[number]);
            m_text += TerminalPage::kPlain;
            m_text += number != 0 ? ", " : "";
        }
        declaration.type != mosaic2::vtBool ? addValue(declaration) : addSwitch(declaration);
        m_page.words(m_text, kFurtherLines);
    }

    void addValue(Declaration const& declaration) {
        addValueForm(m_text, declaration);
        if (m_outline.addDefault(m_text, " (", declaration)) {
            m_text += ')';
        }
    }

    void addSwitch(Declaration const& declaration) {
        mosaic2::variant_t const* const value = declaration.defaultValue.value;
        bool const hasDefault = value != nullptr && value->can_get<bool>();
        m_text += hasDefault && value->get<bool>() ? " (default) | " : " | ";
        m_text += TerminalPage::kBold;
        m_outline.addNegated(m_text, declaration);
        m_text += TerminalPage::kPlain;
        m_text += hasDefault && !value->get<bool>() ? " (default)" : "";
    }

    std::string_view const m_program;
    int const m_columns;
    Outline const m_outline;
    TerminalPage m_page;
    std::string m_text;  // of one part after the other
};

}  // namespace

char const* helpText(IParser* parser, HelpLayout const* layout) {
    BasicParser* const ours = basicParserOf(parser);
    if (ours == nullptr) {
        return "";
    }
    try {
        return ours->texts().init(TerminalHelp(*ours, knownPart(layout)).write());
    } catch (std::exception const&) {  // no memory
        return "";
    }
}

}  // namespace varo_3_3
