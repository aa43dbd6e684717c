// Puts the parts together and turns every end into an exit code.
#include "cli/program.h"

#include <new>
#include <string>
#include <variant>
#include <vector>

#include <unistd.h>

#include "cli/conversion.h"
#include "cli/document_sink.h"
#include "cli/failure.h"
#include "cli/filter_folder.h"
#include "cli/info_report.h"
#include "cli/info_sink.h"
#include "cli/input_file.h"
#include "cli/messages.h"
#include "cli/options.h"
#include "cli/output_file.h"
#include "cli/password_file.h"
#include "cli/progress_bar.h"
#include "cli/signals.h"
#include "cli/system.h"

namespace zorvan::cli {
namespace {

void Print(const std::string& text) {
    OutputFile output("-");
    output.Write(text.data(), text.size());
    output.Commit();
}

ExitCode WriteDocument(const Options& options, const InputFile& input, LibrarySession& session,
                       Messages& messages, ProgressBar& progress) {
    OutputFile output(options.output);
    DocumentSink sink(output, {options.askForPageSize, options.keepGoing});
    Conversion conversion(options, session, sink, messages, progress);
    const ExitCode code = conversion.Run(input.LibraryPath());
    output.Commit();
    return code;
}

ExitCode PrintInfo(const Options& options, const InputFile& input, LibrarySession& session,
                   Messages& messages, ProgressBar& progress) {
    InfoSink sink;
    Conversion conversion(options, session, sink, messages, progress);
    const ExitCode code = conversion.Run(input.LibraryPath());
    const InfoReport report = {options.input, conversion.PageCount(), sink.Pages(),
                               sink.Fonts(),  sink.OutputBytes(),     conversion.FirstError()};
    Print(options.json ? InfoAsJson(report) : InfoAsText(report));
    return code;
}

ExitCode Convert(Options options) {
    StartDeadline(options.timeout);
    if (options.passwordFile) {
        options.password = ReadPasswordFile(*options.passwordFile);
    }
    const InputFile input(options.input);
    if (IsSameFile(options.input, options.output)) {
        throw Failure(ExitCode::kUsage, options.output + ": is the input, which is never overwritten");
    }
    ProgressBar progress(!options.quiet && ::isatty(STDERR_FILENO) != 0, STDERR_FILENO,
                         std::chrono::seconds(1));
    Messages messages(options.quiet, progress);
    const std::vector<std::string> folders = FilterFolders(options.filterFolder);
    LibrarySession session(ChooseFilterFolder(folders));
    RequireCodecs(session, folders);
    return options.info ? PrintInfo(options, input, session, messages, progress)
                        : WriteDocument(options, input, session, messages, progress);
}

ExitCode RunCommandLine(int argc, const char* const* argv) {
    const std::variant<Options, Notice> wanted = ParseOptions(argc, argv);
    if (const auto* notice = std::get_if<Notice>(&wanted)) {
        Print(notice->text);
        return ExitCode::kDone;
    }
    return Convert(std::get<Options>(wanted));
}

}  // namespace

int RunProgram(int argc, const char* const* argv) {
    PrepareStandardStreams();
    InstallSignalHandlers();
    try {
        return static_cast<int>(RunCommandLine(argc, argv));
    } catch (const Failure& failure) {
        if (*failure.what() != '\0') {
            PrintMessage(failure.what());
        }
        return static_cast<int>(failure.Code());
    } catch (const std::bad_alloc&) {
        PrintMessage("memory is not enough");
        return static_cast<int>(ExitCode::kFailed);
    }
}

}  // namespace zorvan::cli
