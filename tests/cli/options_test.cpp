// What the command line means.
#include "cli/options.h"

#include <vector>

#include <gmock/gmock.h>

#include "cli/failure.h"
#include "cli/password_file.h"
#include "tests/cli/scratch_folder.h"

namespace zorvan::cli {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

std::variant<Options, Notice> Parse(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "zorvan");
    return ParseOptions(static_cast<int>(arguments.size()), arguments.data());
}

Options Parsed(const std::vector<const char*>& arguments) {
    return std::get<Options>(Parse(arguments));
}

/// What is told of a wrong command line; empty for a right one.
std::string UsageError(const std::vector<const char*>& arguments) {
    try {
        Parse(arguments);
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.Code(), ExitCode::kUsage);
        return failure.what();
    }
    return "";
}

bool IsUsageError(const std::vector<const char*>& arguments) {
    return !UsageError(arguments).empty();
}

TEST(Options, HaveDefaults) {
    const Options options = Parsed({"in.pdf"});
    EXPECT_EQ(options.input, "in.pdf");
    EXPECT_EQ(options.output, "in.ps");
    EXPECT_FALSE(options.password.has_value());
    EXPECT_FALSE(options.filterFolder.has_value());
    EXPECT_TRUE(options.askForPageSize);
    EXPECT_FALSE(options.keepGoing || options.quiet || options.info || options.json);
    EXPECT_THAT(options.pages.Resolve(2), ElementsAre(1, 2));
}

TEST(Options, AreAllTaken) {
    const Options options = Parsed({"--pages", "2-", "--password=x y", "--page-size=none", "--keep-going",
                                    "--quiet", "--filter-dir", "/f", "in.pdf", "-o", "out.ps"});
    EXPECT_THAT(options.pages.Resolve(3), ElementsAre(2, 3));
    EXPECT_EQ(options.password, "x y");
    EXPECT_FALSE(options.askForPageSize);
    EXPECT_TRUE(options.keepGoing && options.quiet);
    EXPECT_EQ(options.filterFolder, "/f");
    EXPECT_EQ(options.output, "out.ps");
}

TEST(Options, TakeADashAsStandardOutput) {
    EXPECT_EQ(Parsed({"in.pdf", "-"}).output, "-");
    EXPECT_EQ(Parsed({"in.pdf", "-o", "-"}).output, "-");
}

TEST(Options, TakeNamesThatBeginWithADashBehindTwoDashes) {
    const Options options = Parsed({"--", "-in.pdf", "-out.ps"});
    EXPECT_EQ(options.input, "-in.pdf");
    EXPECT_EQ(options.output, "-out.ps");
}

TEST(Options, TakeAPasswordThatLooksLikeAnOption) {
    EXPECT_EQ(Parsed({"in.pdf", "--password", "-secret"}).password, "-secret");
    EXPECT_EQ(Parsed({"in.pdf", "--password", "--quiet"}).password, "--quiet");
}

TEST(Options, NeverTellWhatMayBeAPassword) {
    for (const std::vector<const char*>& wrong :
         {std::vector{"--password", "my", "secret"}, {"--pasword=secret"}, {"-psecret"}}) {
        std::vector<const char*> arguments{"in.pdf", "out.ps"};
        arguments.insert(arguments.end(), wrong.begin(), wrong.end());
        EXPECT_THAT(UsageError(arguments), AllOf(HasSubstr("not expected"), Not(HasSubstr("secret"))))
            << wrong.front();
    }
}

TEST(Options, TakeAnEmptyPassword) {
    EXPECT_EQ(Parsed({"in.pdf", "--password="}).password, "");
    EXPECT_EQ(Parsed({"in.pdf", "--password", ""}).password, "");
    EXPECT_EQ(Parsed({"in.pdf", "--password"}).password, "");
    for (const std::vector<const char*>& first : {std::vector{"--password", ""}, {"--password="}}) {
        std::vector<const char*> arguments = first;
        arguments.insert(arguments.end(), {"in.pdf", "out.ps"});
        EXPECT_EQ(Parsed(arguments).input, "in.pdf");
        EXPECT_EQ(Parsed(arguments).password, "");
    }
}

TEST(Options, LeaveTheOutputEmptyForInfo) {
    const Options options = Parsed({"--info", "--json", "in.pdf"});
    EXPECT_TRUE(options.info && options.json);
    EXPECT_EQ(options.output, "");
}

TEST(Options, RefuseWhatMakesNoSense) {
    EXPECT_TRUE(IsUsageError({}));
    EXPECT_TRUE(IsUsageError({"--nonsense", "in.pdf"}));
    EXPECT_TRUE(IsUsageError({"in.pdf", "a.ps", "b.ps"}));
    EXPECT_TRUE(IsUsageError({"in.pdf", "a.ps", "-o", "b.ps"}));
    EXPECT_TRUE(IsUsageError({"in.pdf", ""}));
    EXPECT_TRUE(IsUsageError({"in.pdf", "-o", ""}));
    EXPECT_TRUE(IsUsageError({"--info", "in.pdf", "out.ps"}));
    EXPECT_TRUE(IsUsageError({"--json", "in.pdf"}));
    EXPECT_TRUE(IsUsageError({"--page-size=a4", "in.pdf"}));
    EXPECT_TRUE(IsUsageError({"--pages", "0", "in.pdf"}));
    EXPECT_TRUE(IsUsageError({"--pages", "", "in.pdf"}));
    EXPECT_TRUE(IsUsageError({"--timeout", "0", "in.pdf"}));
    EXPECT_TRUE(IsUsageError({"--timeout", "-1", "in.pdf"}));
    EXPECT_TRUE(IsUsageError({"--timeout", "soon", "in.pdf"}));
    EXPECT_TRUE(IsUsageError({"--password", "a", "--password-file", "b", "in.pdf"}));
}

TEST(Options, NameAPasswordFileAndATime) {
    const Options options = Parsed({"in.pdf", "--password-file", "-", "--timeout", "60"});
    EXPECT_EQ(options.passwordFile, "-");
    EXPECT_EQ(options.timeout, 60U);
    EXPECT_FALSE(Parsed({"in.pdf"}).passwordFile.has_value());
    EXPECT_EQ(Parsed({"in.pdf"}).timeout, 0U);
}

TEST(PasswordFile, IsReadWithoutOneLineEnd) {
    const ScratchFolder scratch;
    const auto read = [&scratch](const std::string& text) {
        return ReadPasswordFile(scratch.Write("password", text));
    };
    EXPECT_EQ(read("secret"), "secret");
    EXPECT_EQ(read("secret\n"), "secret");
    EXPECT_EQ(read("secret\r\n"), "secret");
    EXPECT_EQ(read("secret\n\n"), "secret\n");
    EXPECT_EQ(read(" two words "), " two words ");
    EXPECT_EQ(read(""), "");
    EXPECT_EQ(read(std::string(100000, 'x')), std::string(4096, 'x'));
}

TEST(PasswordFile, ThatCannotBeReadIsAUsageError) {
    const ScratchFolder scratch;
    EXPECT_THROW(ReadPasswordFile(scratch.Path("missing")), Failure);
    EXPECT_THROW(ReadPasswordFile(scratch.Path("")), Failure);
}

TEST(Options, TellOfThemselves) {
    const std::string help = std::get<Notice>(Parse({"--help"})).text;
    for (const char* text : {"INPUT", "OUTPUT", "-o", "--info", "--json", "--pages", "--password",
                             "--password-file", "--timeout", "--page-size", "--keep-going", "--quiet",
                             "--filter-dir", "--version", "Exit status"}) {
        EXPECT_THAT(help, HasSubstr(text));
    }
    const std::string version = std::get<Notice>(Parse({"--version"})).text;
    EXPECT_THAT(version, testing::StartsWith("zorvan "));
    EXPECT_EQ(version.find_first_not_of("0123456789.", 7), version.size() - 1);
    EXPECT_EQ(version.back(), '\n');
}

TEST(DefaultOutput, TakesTheInputsNameAndFolder) {
    EXPECT_EQ(DefaultOutput("dir.pdf/a.pdf"), "dir.pdf/a.ps");
    EXPECT_EQ(DefaultOutput("A.PDF"), "A.ps");
    EXPECT_EQ(DefaultOutput("ticket.jtf"), "ticket.jtf.ps");
    EXPECT_EQ(DefaultOutput("a.ps"), "a.ps.ps");
    EXPECT_EQ(DefaultOutput("x/.pdf"), "x/.pdf.ps");
}

}  // namespace
}  // namespace zorvan::cli
