#include <algorithm>
#include <cstring>
#include <exception>

#include "documents/outline.h"
#include "documents/page.h"
#include "documents/printable.h"
#include "documents/sized.h"
#include "platform/join.h"

namespace varo_3_3 {
namespace {

using namespace internal;

bool isMissing(char const* text) {
    return printableLine(textOf(text)).find_first_not_of(' ') == std::string::npos;
}

/// Whether a date reads like "2026-11-21".
bool isDate(std::string_view text) {
    constexpr std::string_view kForm = "dddd-dd-dd";
    return std::equal(kForm.begin(), kForm.end(), text.begin(), text.end(),
                      [](char form, char byte) {
                          return form == '-' ? byte == '-' : byte >= '0' && byte <= '9';
                      });
}

bool isWritable(Manual const& about, int form) {
    return (form == kManualPage || form == kManualMarkdown) && about.section >= 1 &&
           about.section <= 9 && !isMissing(about.name) && !isMissing(about.summary) &&
           isDate(textOf(about.date));
}

/// What is told of a declaration below its forms.
std::string entryText(Outline const& outline, Declaration const& declaration) {
    std::string text = printable(declaration.description);
    std::string defaultText;
    outline.addDefault(defaultText, declaration);
    if (!defaultText.empty()) {
        text += "\nDefault: ";
        text += defaultText;
    }
    for (int number = 0; number < declaration.deprecatedCount; ++number) {
        ReplacedValue const& replaced = declaration.deprecated[number];
        text += '\n';
        text += printableLine(replaced.deprecated.text);
        text += " is deprecated and replaced by ";
        text += printableLine(replaced.replacement.text);
    }
    text += declaration.isPositional != 0 ? "\nPlain arguments are its values." : "";
    return text;
}

std::string formsOf(Outline const& outline, Declaration const& declaration) {
    std::string forms;
    for (int number = declaration.nameCount; number-- > 0;) {
        outline.addDashed(forms, declaration.names[number]);
        forms += number != 0 ? "\t\n" : "\t";
    }
    addValueForm(forms, declaration);
    if (declaration.type == mosaic2::vtBool) {
        forms += '\n';
        outline.addNegated(forms, declaration);
        forms += '\t';
    }
    return forms;
}

void addDeclarations(Page& page, Outline const& outline) {
    for (std::size_t number = 0; number < outline.entries().size(); ++number) {
        Outline::Entry const& entry = outline.entries()[number];
        Declaration const& declaration = *entry.declaration;
        if (outline.beginsPart(number) && entry.part != Outline::kModifiers) {
            page.heading(entry.part == Outline::kActions ? "Actions" : "Options");
        }
        if (outline.beginsGroup(number)) {
            std::string const heading = outline.heading(entry);
            if (!heading.empty()) {
                page.subheading(heading);
            }
            if (entry.part == Outline::kOptions) {
                page.text(printable(declaration.sectionText), false);
            }
        }
        page.entry(formsOf(outline, declaration), entryText(outline, declaration));
        if (outline.endsActions(number)) {
            page.text(outline.together(), false);
        }
    }
}

void addPart(Page& page, std::string_view heading, char const* text) {
    if (!isMissing(text)) {
        page.heading(heading);
        page.text(printable(text), true);
    }
}

std::string write(BasicParser& parser, Manual const& about, ManualForm form) {
    std::string const name = printableLine(about.name);
    std::string const version = printableLine(textOf(about.version));
    std::string const source = join({name, version.empty() ? "" : " ", version});
    Outline const outline(parser, false, nullptr);
    Page page(form);
    page.begin(name, about.section, about.date, source);
    if (form == kManualPage) {
        page.heading("Name");
        page.text(join({name, " - ", printableLine(about.summary)}), false);
    } else {
        page.text(join({printableLine(about.summary), "\n\n", source, ", ", about.date}), false);
    }
    page.heading("Synopsis");
    if (isMissing(about.synopsis)) {
        page.usage(name, outline.usage());
    } else {
        page.text(printable(about.synopsis), true);
    }
    addPart(page, "Description", about.description);
    addDeclarations(page, outline);
    addPart(page, "Exit status", about.exitStatus);
    addPart(page, "Files", about.files);
    addPart(page, "Examples", about.examples);
    addPart(page, "See also", about.seeAlso);
    return page.take();
}

}  // namespace

char const* manual(IParser* parser, Manual const* about, int form) {
    BasicParser* const ours = basicParserOf(parser);
    if (ours == nullptr) {
        return "";
    }
    try {
        Manual const known = internal::knownPart(about);
        return isWritable(known, form)
                   ? ours->texts().init(write(*ours, known, static_cast<ManualForm>(form)))
                   : "";
    } catch (std::exception const&) {  // no memory
        return "";
    }
}

}  // namespace varo_3_3
