#include <algorithm>
#include <cstring>
#include <exception>

#include "documents/outline.h"
#include "documents/page.h"
#include "documents/printable.h"
#include "documents/sized.h"

namespace varo_3_3 {
namespace {

using namespace internal;

/// Whether a date reads like "2026-11-21". Every month may have 31 days.
bool isDate(std::string_view text) {
    constexpr std::string_view kForm = "dddd-dd-dd";
    bool const hasForm =
        std::equal(kForm.begin(), kForm.end(), text.begin(), text.end(), [](char form, char byte) {
            return form == '-' ? byte == '-' : byte >= '0' && byte <= '9';
        });
    if (!hasForm) {
        return false;
    }
    int const month = 10 * (text[5] - '0') + text[6] - '0';
    int const day = 10 * (text[8] - '0') + text[9] - '0';
    return month >= 1 && month <= 12 && day >= 1 && day <= 31;
}

bool isWritable(Manual const& about, int form) {
    return (form == kManualPage || form == kManualMarkdown) && about.section >= 1 &&
           about.section <= 9 && !isBlank(about.name) && !isBlank(about.summary) &&
           isDate(textOf(about.date));
}

/// Writes a manual, all of whose required texts are there.
class ManualWriter {
public:
    ManualWriter(BasicParser& parser, Manual const& about, ManualForm form)
        : m_about(about),
          m_isPage(form == kManualPage),
          m_outline(parser, false, nullptr),
          m_page(form) {}

    std::string write() {
        addTitle();
        addSynopsis();
        addPart("Description", m_about.description);
        addDeclarations();
        addPart("Exit status", m_about.exitStatus);
        addPart("Files", m_about.files);
        addPart("Examples", m_about.examples);
        addPart("See also", m_about.seeAlso);
        return m_page.take();
    }

private:
    void addTitle() {
        addPrintableLine(m_name, m_about.name);
        m_text = m_name;
        m_text += isBlank(m_about.version) ? "" : " ";
        addPrintableLine(m_text, textOf(m_about.version));
        m_page.begin(m_name, m_about.section, m_about.date, m_text);
        if (m_isPage) {
            m_page.heading("Name");
            m_text = m_name;
            m_text += " - ";
            addPrintableLine(m_text, m_about.summary);
        } else {
            std::string const source = std::move(m_text);
            m_text.clear();
            addPrintableLine(m_text, m_about.summary);
            m_text += "\n\n";
            m_text += source;
            m_text += ", ";
            m_text += m_about.date;
        }
        m_page.text(m_text, false);
    }

    void addSynopsis() {
        m_page.heading("Synopsis");
        m_text.clear();
        if (isBlank(m_about.synopsis)) {
            m_outline.addUsage(m_text);
            m_page.usage(m_name, m_text);
        } else {
            addText(m_about.synopsis, true);
        }
    }

    void addPart(char const* heading, char const* text) {
        if (!isBlank(text)) {
            m_page.heading(heading);
            addText(text, true);
        }
    }

    void addText(char const* text, bool keepsIndented) {
        m_text.clear();
        addPrintable(m_text, text);
        m_page.text(m_text, keepsIndented);
    }

    void addDeclarations() {
        for (std::size_t number = 0; number < m_outline.size(); ++number) {
            addHeadings(number);
            writeForms(m_outline.declaration(number));
            writeText(m_outline.declaration(number));
            m_page.entry(m_forms, m_text);
            if (m_outline.endsActions(number)) {
                m_text.clear();
                m_outline.addTogether(m_text);
                m_page.text(m_text, false);
            }
        }
    }

    void addHeadings(std::size_t number) {
        Outline::Part const part = m_outline.part(number);
        if (m_outline.beginsPart(number) && part != Outline::kModifiers) {
            m_page.heading(part == Outline::kActions ? "Actions" : "Options");
        }
        if (m_outline.beginsGroup(number)) {
            m_text.clear();
            m_outline.addHeading(m_text, number);
            if (!m_text.empty()) {
                m_page.subheading(m_text);
            }
            if (part == Outline::kOptions) {
                addText(m_outline.declaration(number).sectionText, false);
            }
        }
    }

    void writeForms(Declaration const& declaration) {
        m_forms.clear();
        for (int number = declaration.nameCount; number-- > 0;) {
            m_outline.addDashed(m_forms, declaration.names[number]);
            m_forms += number != 0 ? "\t\n" : "\t";
        }
        addValueForm(m_forms, declaration);
        if (declaration.type == mosaic2::vtBool) {
            m_forms += '\n';
            m_outline.addNegated(m_forms, declaration);
            m_forms += '\t';
        }
    }

    /// What is told of a declaration below its forms.
    void writeText(Declaration const& declaration) {
        m_text.clear();
        addPrintable(m_text, declaration.description);
        m_outline.addDefault(m_text, "\nDefault: ", declaration);
        for (int number = 0; number < declaration.deprecatedCount; ++number) {
            ReplacedValue const& replaced = declaration.deprecated[number];
            m_text += '\n';
            addPrintableLine(m_text, replaced.deprecated.text);
            m_text += " is deprecated and replaced by ";
            addPrintableLine(m_text, replaced.replacement.text);
        }
        m_text += declaration.isPositional != 0 ? "\nPlain arguments are its values." : "";
    }

    Manual const& m_about;
    bool const m_isPage;
    Outline const m_outline;
    Page m_page;
    std::string m_name;
    std::string m_forms;
    std::string m_text;  // of one part after the other
};

}  // namespace

char const* manual(IParser* parser, Manual const* about, int form) {
    BasicParser* const ours = basicParserOf(parser);
    if (ours == nullptr) {
        return "";
    }
    try {
        Manual const known = internal::knownPart(about);
        return isWritable(known, form)
                   ? ours->texts().init(
                         ManualWriter(*ours, known, static_cast<ManualForm>(form)).write())
                   : "";
    } catch (std::exception const&) {  // no memory
        return "";
    }
}

}  // namespace varo_3_3
