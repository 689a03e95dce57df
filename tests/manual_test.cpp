#include <cstring>

#include "support.h"
#include "varo/documents.h"

namespace {

using namespace varo_test;
using namespace mosaic2;

varo::Manual aboutSample() {
    varo::Manual about;
    about.name = "sample";
    about.summary = "show what a manual looks like";
    about.date = "2026-11-21";
    about.version = "1.2";
    about.description = "First line.\nSecond line.\n\nSecond paragraph.\n  sample --run\nEnd.";
    about.exitStatus = "0 or 1";
    return about;
}

varo::Parser declareSample() {
    varo::Parser parser(varo::kDoubleDashHelp);
    parser->action("run,r", "Runs it.", vtNull, "");
    parser->action("list", "", vtU32, "");
    parser->action("secret", "Never shown", vtNull, "varo_hidden");
    parser->allowSimultaneousActions({"run", "list", "secret"});
    parser->modifier("depth", "run,list", "How deep", vtS32, "General")->defaultValue(3);
    parser->modifier("trace", "secret", "No visible action", vtNull, "General");
    parser->modifier("input", "run", "What to read", vtString, "")->positional();
    parser->option("color,c", "Colours | <all>", vtBool, "General:About\nall")->defaultValue(false);
    parser->option("format", "A -- B", vtString, "")
        ->allowValue("csv")
        ->allowValue("a\\b")
        ->allowDeprecatedValue("old", "csv");
    return parser;
}

TEST(Manual, IsAPageForMan) {
    varo::Parser const parser = declareSample();
    varo::Manual const about = aboutSample();
    EXPECT_STREQ(varo::manual(parser.interface(), &about, varo::kManualPage),
                 R"(.TH SAMPLE 1 2026-11-21 "sample 1.2"
.ad l
.nh
.SH NAME
sample \- show what a manual looks like
.SH SYNOPSIS
\fBsample\fR \-\-list=<unsigned integer> [OPTION]...
.br
\fBsample\fR \-\-run [OPTION]... [<input>]...
.SH DESCRIPTION
First line.
.br
Second line.
.PP
Second paragraph.
.PP
.nf
  sample \-\-run
.fi
.PP
End.
.SH ACTIONS
\fB\-\-list\fR=<unsigned integer>
.PP
\fB\-r\fR,
\fB\-\-run\fR
.RS 4
Runs it.
.RE
.PP
These may be given together: \-\-list, \-\-run
.SS "Modifiers of \-\-list, \-\-run"
\fB\-\-depth\fR=<integer>
.RS 4
How deep
.br
Default: 3
.RE
.SS "Modifiers of \-\-run"
\fB\-\-input\fR=<string>
.RS 4
What to read
.br
Plain arguments are its values.
.RE
.SH OPTIONS
\fB\-\-format\fR=csv | a\eb
.RS 4
A \-\- B
.br
old is deprecated and replaced by csv
.RE
.SS "General"
About
.br
all
.PP
\fB\-c\fR,
\fB\-\-color\fR,
\fB\-\-no\-color\fR
.RS 4
Colours | <all>
.br
Default: \-\-no\-color
.RE
.PP
\fB\-\-trace\fR
.RS 4
No visible action
.RE
.SH EXIT STATUS
0 or 1
)");
}

TEST(Manual, IsMarkdown) {
    varo::Parser const parser = declareSample();
    varo::Manual about = aboutSample();
    about.synopsis = "  sample [-r]";
    EXPECT_STREQ(varo::manual(parser.interface(), &about, varo::kManualMarkdown),
                 varo_test::expected("manual.md").c_str());
}

TEST(Manual, WithoutActionsThereIsOneCommandLine) {
    varo::Parser const parser;
    varo::Manual const about = aboutSample();
    EXPECT_NE(std::strstr(varo::manual(parser.interface(), &about, 0), "\\fBsample\\fR\n"),
              nullptr);
    parser->option("level", "", vtNull, "");
    parser->modifier("input", "none", "", vtString, "")->positional();
    EXPECT_NE(std::strstr(varo::manual(parser.interface(), &about, 0),
                          "\\fBsample\\fR [OPTION]... [<input>]...\n"),
              nullptr);
}

// What is wrong gives no text, and leaves the parser as it was.
TEST(Manual, NeedsItsTexts) {
    varo::Parser const parser;
    auto const isEmpty = [&](void (*spoil)(varo::Manual&), int form = varo::kManualPage) {
        varo::Manual about = aboutSample();
        spoil(about);
        return *varo::manual(parser.interface(), &about, form) == '\0';
    };
    EXPECT_FALSE(isEmpty([](varo::Manual&) {}));
    EXPECT_TRUE(isEmpty([](varo::Manual&) {}, 2));
    EXPECT_TRUE(isEmpty([](varo::Manual& about) { about.name = nullptr; }));
    EXPECT_TRUE(isEmpty([](varo::Manual& about) { about.name = " \n"; }));
    EXPECT_TRUE(isEmpty([](varo::Manual& about) { about.summary = ""; }));
    for (auto const spoil : {+[](varo::Manual& about) { about.date = nullptr; },
                             +[](varo::Manual& about) { about.date = "2026-11-2x"; },
                             +[](varo::Manual& about) { about.date = "2026-11-21 \n.SH"; },
                             +[](varo::Manual& about) { about.date = "2026-13-21"; },
                             +[](varo::Manual& about) { about.date = "2026-11-00"; },
                             +[](varo::Manual& about) { about.section = 0; },
                             +[](varo::Manual& about) { about.section = 10; }}) {
        EXPECT_TRUE(isEmpty(spoil));
    }
    // An older host, whose structure ends before the date, or in the middle of it.
    EXPECT_TRUE(isEmpty([](varo::Manual& about) { about.size = offsetof(varo::Manual, date); }));
    EXPECT_TRUE(
        isEmpty([](varo::Manual& about) { about.size = offsetof(varo::Manual, date) + 4; }));
    EXPECT_TRUE(isEmpty([](varo::Manual& about) { about.size = -1; }));
    EXPECT_FALSE(
        isEmpty([](varo::Manual& about) { about.size = offsetof(varo::Manual, version); }));
    EXPECT_FALSE(isEmpty([](varo::Manual& about) { about.size += 1000; }));
    varo::Manual const about = aboutSample();
    EXPECT_STREQ(varo::manual(nullptr, &about, varo::kManualPage), "");
    EXPECT_STREQ(varo::manual(parser.interface(), nullptr, varo::kManualPage), "");
}

}  // namespace
