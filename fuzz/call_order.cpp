// Calls the exported functions in any order and checks each result against a model of the job. The input is
// text: a letter for a call and a digit for each argument, whatever else it holds is passed over.
//
//   B folder          KAPRINE_Begin                I outputs    KAPRINE_GetErrInfo
//   F file password   ZORVAN_OneFileBegin          X            KAPRINE_End
//   T                 ZORVAN_GetTotalPages         E            ZORVAN_OneFileEnd
//   G                 ZORVAN_OutputGlobalResources P page       ZORVAN_OutputOnePage
//   R piece status    the callback refuses this piece of those to come
#include <algorithm>
#include <climits>
#include <cstdint>
#include <iterator>
#include <string_view>

#include "fuzz/host.h"

using zorvan::fuzz::Require;

namespace {

struct Host {
    unsigned int pieces = 0;
    unsigned int refusedPiece = 0;  // 0: none
    int refusal = 0;
    bool refused = false;  // in this call
};
Host host;

int ZORVAN_CALL Take(const void* bytes, unsigned int count) {
    Require(bytes != nullptr && count > 0);
    Require(!host.refused);  // the operation in progress calls back no more
    host.refused = ++host.pieces == host.refusedPiece;
    return host.refused ? host.refusal : 0;
}

struct File {
    const char* path;
    int opened;  // the status
    int pages;
    bool isLocked = false;
};
constexpr const char* kLongPath =
    "/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp"
    "/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp"
    "/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp/tmp";
constexpr File kFiles[] = {{EXPANDED_SEEDS "/pages", 0, 7},
                           {EXPANDED_SEEDS "/encrypted", 0, 1, true},
                           {EXPANDED_SEEDS "/job_ticket", 0, 1},
                           {EXPANDED_SEEDS "/broken_pages", 0, 4},
                           {SEEDS "/pdf_file/no_sections", -4095, 0},
                           {SEEDS "/pdf_file/encrypted", -4091, 0},
                           {SEEDS "/pdf_lexer/content", -4069, 0},
                           {SEEDS "/nowhere", -4086, 0},
                           {nullptr, -4086, 0},
                           {kLongPath, -4086, 0}};

struct Password {
    ZORVAN_PasswordRecord record;
    int opened;  // the status of a file that has one
};
constexpr Password kPasswords[] = {
    {{"", 0}, 0}, {{"owner", 5}, 0}, {{"wrong", 5}, -4068}, {{"owner", UINT_MAX}, -4068}};

constexpr const char* kFolders[] = {FILTER_FOLDER, "/nowhere/", FILTER_FOLDER "missing-"};
constexpr int kBegun[] = {0, -4089, -4089};
constexpr unsigned int kPages[] = {0, 1, 2, 3, 4, 5, 6, 7, INT_MAX, UINT_MAX};
constexpr int kRefusals[] = {1, -1, -4080, INT_MIN, INT_MAX};

/// A job, and what is known of it.
class Session {
public:
    explicit Session(std::string_view script) : rest_(script) { host = Host(); }
    ~Session() { KAPRINE_End(); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    void Run() {
        while (!rest_.empty()) {
            host.refused = false;
            CallNext();
            CheckError();
        }
    }

private:
    void CallNext() {
        switch (Next()) {
            case 'B':
                return Begin(Pick(kFolders));
            case 'F':
                return OpenFile();
            case 'T':
                return Require(ZORVAN_GetTotalPages() == PageCount());
            case 'G':
                return CheckWritten(ZORVAN_OutputGlobalResources());
            case 'P':
                return WritePage(kPages[Pick(kPages)]);
            case 'E':
                return EndFile();
            case 'I':
                return AskForError(Digit());
            case 'R':
                return Refuse();
            case 'X':
                return End();
            default:
                return;
        }
    }

    char Next() {
        const char letter = rest_.front();
        rest_.remove_prefix(1);
        return letter;
    }
    unsigned int Digit() {
        return rest_.empty() ? 0 : static_cast<unsigned char>(Next()) - static_cast<unsigned int>('0');
    }
    template <class Row, std::size_t kRows>
    std::size_t Pick(const Row (&)[kRows]) {
        return Digit() % kRows;
    }
    [[nodiscard]] int PageCount() const { return file_ == nullptr ? 0 : file_->pages; }

    void Begin(std::size_t folder) {
        if (hasJob_) {
            Require(zorvan::fuzz::BeginJob(kFolders[folder]) == -1);
            return;
        }
        begun_ = zorvan::fuzz::BeginJob(kFolders[folder]);
        hasJob_ = true;
        Require(begun_ == kBegun[folder]);
    }

    void OpenFile() {
        const File& file = kFiles[Pick(kFiles)];
        const unsigned int choice = Digit();
        const Password& password = kPasswords[choice % std::size(kPasswords)];
        const bool hasCallback = choice < std::size(kPasswords);
        const int status = ZORVAN_OneFileBegin(file.path, hasCallback ? Take : nullptr, &password.record);
        if (!hasJob_ || file_ != nullptr) {
            Require(status == -1);
        } else if (begun_ != 0) {
            Require(status == begun_);
        } else {
            CheckOpened(status, file, file.isLocked ? password.opened : file.opened, hasCallback);
        }
    }
    /// A file that is opened stays so when its header cannot be written.
    void CheckOpened(int status, const File& file, int opened, bool hasCallback) {
        if (opened != 0) {
            Require(status == opened);
            return;
        }
        file_ = &file;
        hasCallback_ = hasCallback;
        CheckWritten(status);
        Require(status == 0 || host.refused || !hasCallback);
    }

    void WritePage(unsigned int page) {
        const unsigned int before = host.pieces;
        const int status = ZORVAN_OutputOnePage(page);
        CheckWritten(status);
        if (page == 0 || page > static_cast<unsigned int>(PageCount())) {
            Require(status == 0 && host.pieces == before);
        }
    }
    /// The status of what writes to the open file.
    void CheckWritten(int status) const {
        zorvan::fuzz::RequireStatus(status, host.refused ? host.refusal : 0);
        Require(!host.refused || status == host.refusal);
        Require(file_ != nullptr || status == 0);
        Require(file_ == nullptr || hasCallback_ || status == 0 || status == -4085);
    }

    void EndFile() {
        const unsigned int before = host.pieces;
        ZORVAN_OneFileEnd();
        Require(host.pieces == before + (file_ != nullptr && hasCallback_ ? 1 : 0));
        file_ = nullptr;
    }
    void End() {
        KAPRINE_End();
        file_ = nullptr;
        hasJob_ = false;
        error_ = 0;
    }
    void Refuse() {
        host.refusedPiece = host.pieces + 1 + Digit();
        host.refusal = kRefusals[Pick(kRefusals)];
    }

    /// Each bit leaves an output out; without a job none is touched.
    void AskForError(unsigned int leftOut) const {
        const char* message = nullptr;
        unsigned int offset = 1;
        const unsigned char* excerpt = nullptr;
        unsigned int length = 1;
        const int code = KAPRINE_GetErrInfo(
            (leftOut & 1U) != 0 ? nullptr : &message, (leftOut & 2U) != 0 ? nullptr : &offset,
            (leftOut & 4U) != 0 ? nullptr : &excerpt, (leftOut & 8U) != 0 ? nullptr : &length);
        Require(code == error_);
        Require((message != nullptr) == (hasJob_ && (leftOut & 1U) == 0));
        Require(hasJob_ || (offset == 1 && excerpt == nullptr && length == 1));
    }
    /// The first error of a job is kept until its end.
    void CheckError() {
        if (hasJob_) {
            const int code = zorvan::fuzz::RequireSoundError();
            Require(error_ == 0 || code == error_);
            error_ = code;
        }
    }

    std::string_view rest_;
    bool hasJob_ = false;
    int begun_ = 0;
    int error_ = 0;
    const File* file_ = nullptr;
    bool hasCallback_ = false;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::size_t kEnough = 200;
    Session({reinterpret_cast<const char*>(data), std::min(size, kEnough)}).Run();
    return 0;
}
