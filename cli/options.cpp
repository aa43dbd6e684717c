// Declares the options to CLI11 and settles what depends on more than one of them.
#include "cli/options.h"

#include <algorithm>
#include <cctype>

#include <CLI/CLI.hpp>

#include "cli/failure.h"

namespace zorvan::cli {
namespace {

constexpr char kPasswordMark = '=';

constexpr char kFooter[] = R"(Without OUTPUT the PostScript goes beside INPUT under its name with .ps.

Exit status:
  0      done
  1      the PDF cannot be opened or read, or has no pages
  2      the output cannot be written
  3      done with warnings: an error was recorded, or a page left out
  4      the password does not open the PDF
  5      the conversion failed; the library's code is printed
  64     usage
  124    not done in the time that --timeout gives
  128+n  ended by signal n; 141 when the reader closed the pipe)";

// CLI11 fills plain values; an option that was not given stays unset in Options.
struct RawOptions {
    Options options;
    std::string pages;
    std::string password;
    std::string passwordFile;
    std::string filterFolder;
    std::string pageSize = "auto";
    std::string outputOption;
};

void DeclareFiles(CLI::App& app, RawOptions& raw) {
    app.add_option("INPUT", raw.options.input, "The PDF file")->required()->type_name("FILE");
    CLI::Option* output =
        app.add_option("OUTPUT", raw.options.output, "The PostScript file, - for standard output")
            ->type_name("FILE");
    CLI::Option* named = app.add_option("-o", raw.outputOption, "The same as OUTPUT");
    named->excludes(output)->type_name("FILE");
    CLI::Option* info = app.add_flag("--info", raw.options.info,
                                     "Write no file: print the number of pages, each page's visible box\n"
                                     "(left, bottom, right, top in points), the fonts, embedded or asked\n"
                                     "of the device, and the bytes of output");
    info->excludes(output)->excludes(named);
    app.add_flag("--json", raw.options.json, "Print what --info tells as JSON")->needs(info);
}

void DeclareConversion(CLI::App& app, RawOptions& raw) {
    app.add_option("--pages", raw.pages,
                   "Convert these pages only, such as 1-3,7,9-; they are sorted and united")
        ->type_name("RANGES");
    CLI::Option* password = app.add_option("--password", raw.password, "The PDF's password");
    password->type_name("TEXT")->expected(0, 1);
    app.add_option("--password-file", raw.passwordFile,
                   "Read the password from a file, - for standard input; a line end\n"
                   "at its end is no part of it")
        ->excludes(password)
        ->type_name("FILE");
    app.add_option("--page-size", raw.pageSize,
                   "auto: ask the device for each page's size and move the page's\n"
                   "corner to the origin; none: leave the library's output as it is")
        ->type_name("auto|none")
        ->check(CLI::IsMember({"auto", "none"}).description(""))
        ->capture_default_str();
    app.add_flag("--keep-going", raw.options.keepGoing, "Leave out a page that fails and go on");
    app.add_flag("--quiet", raw.options.quiet, "No progress bar and no warnings");
    app.add_option("--timeout", raw.options.timeout,
                   "End the job, without any output, when it is not done in time")
        ->type_name("SECONDS")
        ->check(CLI::Range(1U, 1000000U).description(""));
    app.add_option("--filter-dir", raw.filterFolder, "The folder of Filter.dll")->type_name("DIR");
}

Options Settle(const CLI::App& app, RawOptions& raw) {
    Options options = raw.options;
    const auto given = [&app](const char* name) { return app.count(name) > 0; };
    if (given("--pages")) {
        options.pages = PageRanges(raw.pages);
    }
    if (given("--password")) {
        options.password = raw.password.substr(raw.password.empty() ? 0 : 1);  // without the mark
    }
    if (given("--password-file")) {
        options.passwordFile = raw.passwordFile;
    }
    if (given("--filter-dir")) {
        options.filterFolder = raw.filterFolder;
    }
    options.askForPageSize = raw.pageSize == "auto";
    if (given("-o")) {
        options.output = raw.outputOption;
    } else if (!given("OUTPUT") && !options.info) {
        options.output = DefaultOutput(options.input);
    }
    if (options.output.empty() && !options.info) {
        throw Failure(ExitCode::kUsage, "the output's name is empty");
    }
    return options;
}

bool EndsInPdf(const std::string& name) {
    constexpr std::string_view kEnding = ".pdf";
    return name.size() > kEnding.size() &&
           std::equal(kEnding.rbegin(), kEnding.rend(), name.rbegin(), [](char wanted, char found) {
               return wanted == std::tolower(static_cast<unsigned char>(found));
           });
}

/// The arguments from last to first, as CLI11 wants them. A password may begin with "-" or be empty, so it is
/// tied to its option, with a letter in front that is no part of it.
std::vector<std::string> ArgumentsFrom(int argc, const char* const* argv) {
    const std::string option = "--password";
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        if (argument == option && i + 1 < argc) {
            arguments.push_back(option + "=" + kPasswordMark + argv[++i]);
        } else if (argument.starts_with(option + "=")) {
            arguments.push_back(option + "=" + kPasswordMark + argument.substr(option.size() + 1));
        } else {
            arguments.push_back(argument);
        }
    }
    std::ranges::reverse(arguments);
    return arguments;
}

/// What names an option in an argument: behind it may stand a password.
std::string NamePart(const std::string& argument) {
    if (!argument.starts_with("-")) {
        return "an argument too many";
    }
    return argument.starts_with("--") ? argument.substr(0, argument.find('=')) : argument.substr(0, 2);
}

}  // namespace

std::variant<Options, Notice> ParseOptions(int argc, const char* const* argv) {
    CLI::App app("Converts a PDF file to DSC 3.0 PostScript for Language Level 3 devices.", "zorvan");
    app.allow_windows_style_options(false);  // a path may begin with a slash there, too
    app.set_help_flag("--help,-h", "Print this help");
    app.set_version_flag("--version", "zorvan " ZORVAN_VERSION, "Print the version");
    app.footer(kFooter);
    RawOptions raw;
    DeclareFiles(app, raw);
    DeclareConversion(app, raw);
    try {
        app.parse(ArgumentsFrom(argc, argv));
        return Settle(app, raw);
    } catch (const CLI::CallForHelp&) {
        return Notice{app.help()};
    } catch (const CLI::CallForVersion&) {
        return Notice{"zorvan " ZORVAN_VERSION "\n"};
    } catch (const CLI::ExtrasError&) {
        throw Failure(ExitCode::kUsage,
                      "not expected: " + NamePart(app.remaining().front()) + " (zorvan --help tells more)");
    } catch (const CLI::ParseError& error) {
        throw Failure(ExitCode::kUsage, std::string(error.what()) + " (zorvan --help tells more)");
    }
}

std::string DefaultOutput(const std::string& input) {
    const std::size_t slash = input.rfind('/');
    const std::string name = slash == std::string::npos ? input : input.substr(slash + 1);
    const std::size_t ending = EndsInPdf(name) ? 4 : 0;
    return input.substr(0, input.size() - ending) + ".ps";
}

}  // namespace zorvan::cli
