// Writing the document's fixed lines and running the interpreter.
#include "prolog/prolog_job.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "ps/prolog_data.h"

namespace zorvan::test {
namespace {

constexpr std::string_view kHeader =
    "%!PS-Adobe-3.0\n%%Version: 1 3\n%%Creator: Prolog test\n"
    "%%BoundingBox: 0.000000 0.000000 100.000000 100.000000\n%%Pages: 1\n%%EndComments\n";

constexpr std::string_view kAfterProlog =
    "currentdict readonly pop\n"
    "end end\n"
    "/currentpacking where {pop setpacking}if\n"
    "PDFVars/DocInitAll{[ PDFText]{/docinitialize get exec}forall }put\n"
    "PDFVars/InitAll{[PDF PDFText PDFImage]{/initialize get exec}forall initgs}put\n"
    "PDFVars/TermAll{[PDFImage PDFText PDF]{/terminate get exec}forall}put\n"
    "PDFVars begin PDF begin\n"
    "PDFVars/DocInitAll get exec PDFVars/InitAll get exec\n";

constexpr std::string_view kEndOfSetup = "PDFVars/TermAll get exec end end\n%%EndSetup\n";

constexpr std::string_view kPageBegin =
    "%%BeginPageSetup\nuserdict /pgsave save put\nPDFVars begin PDF begin PDFVars/InitAll get exec\n";

constexpr std::string_view kPageContent = "%%EndPageSetup\n0.000000 0.000000 100.000000 100.000000 RC\n";

constexpr std::string_view kPageEnd =
    "PDFVars/TermAll get exec end end\nuserdict /pgsave get restore\nshowpage\n%%PageTrailer\n%%EndPage\n";

std::string ReadFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

class Folder {
public:
    Folder() = default;
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    [[nodiscard]] const std::string& Path() const { return path_; }

private:
    std::string path_ = ShellPath(MakeFolder((std::filesystem::temp_directory_path() / "prolog").string()));
};

}  // namespace

std::string_view StoredText(unsigned identifier) {
    const auto* found = std::ranges::find(kPrologResources, identifier, &PrologResource::id);
    if (found == std::end(kPrologResources)) {
        return {};
    }
    return {reinterpret_cast<const char*>(found->bytes), found->size};
}

const std::string& ScratchFolder() {
    static const Folder folder;
    return folder.Path();
}

// A job that never ends fails its test by the status of timeout.
Outcome Interpret(const std::string& options, std::string_view text) {
    const std::string path = ScratchFolder() + "/job.ps";
    std::ofstream(path, std::ios::binary) << text;
    return RunShell("timeout 60 " GHOSTSCRIPT " -dSAFER -dBATCH -dNOPAUSE -q " + options + " " + path);
}

Picture::Picture(const std::string& path) {
    std::istringstream file(ReadFile(path));
    std::string word;
    file >> word;
    const bool anyMap = word == "P7";
    components_ = 3;
    std::array<int*, 2> sizes{&width_, &height_};
    for (std::size_t read = 0; !anyMap && read < sizes.size();) {
        file >> word;
        if (word.starts_with('#')) {
            std::getline(file, word);
        } else {
            *sizes[read++] = std::stoi(word);
        }
    }
    while (anyMap && file >> word && word != "ENDHDR") {
        int* value = word == "WIDTH"    ? &width_
                     : word == "HEIGHT" ? &height_
                     : word == "DEPTH"  ? &components_
                                        : nullptr;
        if (value != nullptr) {
            file >> *value;
        } else {
            std::getline(file, word);
        }
    }
    std::getline(file, word);
    if (!anyMap) {
        std::getline(file, word);
    }
    samples_ = std::string(std::istreambuf_iterator<char>(file), {});
}

std::vector<int> Picture::At(int x, int y) const {
    const int row = height_ - 1 - y;
    const auto at = static_cast<std::size_t>(row * width_ + x) * static_cast<std::size_t>(components_);
    const std::string pixel = samples_.substr(at, static_cast<std::size_t>(components_));
    std::vector<int> color(pixel.size());
    std::ranges::transform(pixel, color.begin(), [](char each) { return static_cast<unsigned char>(each); });
    return color;
}

PrologJob& PrologJob::Before(std::string_view text) {
    before_ += text;
    return *this;
}

PrologJob& PrologJob::Setup(std::string_view text) {
    setup_ += text;
    return *this;
}

PrologJob& PrologJob::Page(std::string_view content, std::string_view pageSetup) {
    pages_.push_back({std::string(content), std::string(pageSetup)});
    return *this;
}

std::string PrologJob::Text() const {
    std::ostringstream text;
    text << before_ << kHeader << StoredText(7003)
         << "/currentpacking where{pop currentpacking true setpacking}if\n"
         << StoredText(7004) << "PDFVars begin PDF begin\n";
    for (const unsigned identifier : {7005U, 7006U, 7007U, 7012U, 7008U, 7009U, 7010U}) {
        text << StoredText(identifier);
    }
    text << kAfterProlog << setup_ << kEndOfSetup;
    int number = 0;
    for (const auto& [content, pageSetup] : pages_) {
        ++number;
        text << "\n%%Page: " << number << ' ' << number << '\n'
             << kPageBegin << pageSetup << kPageContent << content << '\n'
             << kPageEnd;
    }
    text << "%%Trailer\n%%EOF\n";
    return text.str();
}

Outcome PrologJob::Run() const {
    return Interpret("-sDEVICE=nullpage", Text());
}

std::vector<Picture> PrologJob::Paint(const std::string& device) const {
    const std::string name = ScratchFolder() + "/page";
    const auto picture = [&name](std::size_t page) { return name + std::to_string(page); };
    for (std::size_t page = 1; std::filesystem::remove(picture(page)); ++page) {  // an earlier job's
    }
    const Outcome outcome =
        Interpret("-sDEVICE=" + device + " -r72 -g100x100 -sOutputFile=" + name + "%d", Text());
    EXPECT_EQ(outcome.status, 0) << outcome.text;
    std::vector<Picture> pictures;
    for (std::size_t page = 1; std::filesystem::exists(picture(page)); ++page) {
        pictures.emplace_back(picture(page));
    }
    return pictures;
}

std::string Printed(std::string_view content) {
    const Outcome outcome = PrologJob().Page(content).Run();
    EXPECT_EQ(outcome.status, 0) << outcome.text;
    return outcome.text;
}

Picture Painted(std::string_view content, const std::string& device) {
    return PrologJob().Page(content).Paint(device).at(0);
}

}  // namespace zorvan::test
