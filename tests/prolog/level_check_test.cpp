// The check of the device's Language Level.
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

using testing::HasSubstr;
using testing::Not;

/// What is shown and done on a device of this level, told by procedures in front of the operators.
std::string Watched(const std::string& level) {
    return "/languagelevel " + level +
           " def\n"
           "/show {print} def\n"
           "/findfont {(\\n[) print dup =string cvs print (]) print systemdict /findfont get exec} bind def\n"
           "/scalefont {( ) print dup =string cvs print ( ) print scalefont} bind def\n"
           "/moveto {(\\n) print moveto} bind def\n"
           "/initgraphics {(initgraphics) print initgraphics} bind def\n"
           "/showpage {(\\nshowpage) print} def\n"
           "/quit {(\\nquit) = quit} bind def\n";
}

std::string NoticeAtLevel(const std::string& level) {
    const Outcome outcome = PrologJob().Before(Watched(level)).Page("(page ran) =").Run();
    EXPECT_EQ(outcome.status, 0) << outcome.text;
    return outcome.text;
}

TEST(LevelCheck, TellsHowToSetTheDriverToTheLevelOfTheDevice) {
    for (const std::string level : {"1", "2"}) {
        const std::string notice = NoticeAtLevel(level);
        EXPECT_THAT(notice,
                    HasSubstr("The printer driver must be configured for Language Level " + level + "."));
        EXPECT_THAT(notice, HasSubstr("set the PostScript Language Level to " + level));
        EXPECT_THAT(notice, HasSubstr("choose Level " + level + " only"));
        EXPECT_THAT(notice, HasSubstr("Windows"));
        EXPECT_THAT(notice, HasSubstr("Macintosh"));
        EXPECT_THAT(notice, Not(HasSubstr("#")));
    }
}

TEST(LevelCheck, UsesTheNamedFontsAtTheNamedSizes) {
    const std::string notice = NoticeAtLevel("2");
    EXPECT_THAT(notice, HasSubstr("[Helvetica] 18 "));
    EXPECT_THAT(notice, HasSubstr("[Helvetica-Bold] 16 "));
    EXPECT_THAT(notice, HasSubstr("[Times-Roman] 16 "));
}

TEST(LevelCheck, ResetsGraphicsThenShowsOnePageAndQuits) {
    const std::string notice = NoticeAtLevel("2");
    EXPECT_THAT(notice, testing::StartsWith("initgraphics"));
    EXPECT_THAT(notice, testing::EndsWith("showpage\nquit\n"));
    EXPECT_EQ(notice.find("showpage"), notice.rfind("showpage"));
    EXPECT_THAT(notice, Not(HasSubstr("page ran")));
}

TEST(LevelCheck, TakesADeviceWithoutASensibleLevelForLevelOne) {
    EXPECT_THAT(NoticeAtLevel("(none)"), HasSubstr("configured for Language Level 1."));
    EXPECT_THAT(NoticeAtLevel("0"), HasSubstr("configured for Language Level 1."));
}

TEST(LevelCheck, LetsALevelThreeDevicePassWithoutATrace) {
    EXPECT_EQ(Printed("(page ran) ="), "page ran\n");
}

TEST(LevelCheck, ShowsItsNoticeOnThePage) {
    const std::string text = ScratchFolder() + "/notice.txt";
    const Outcome outcome = Interpret("-sDEVICE=txtwrite -sOutputFile=" + text,
                                      "/languagelevel 2 def\n" + std::string(StoredText(7003)));
    ASSERT_EQ(outcome.status, 0) << outcome.text;
    EXPECT_THAT(RunShell("cat " + text).text, HasSubstr("configured for Language Level 2."));
}

// A Level 1 scanner knows neither dictionary marks nor immediately evaluated names nor ASCII85 strings.
TEST(LevelCheck, IsWrittenInLevelOneSyntax) {
    const std::string text(StoredText(7003));
    for (const char* token : {"<<", ">>", "//", "<~"}) {
        EXPECT_THAT(text, Not(HasSubstr(token)));
    }
}

}  // namespace
}  // namespace zorvan::test
