// Writing OPI comments.
#include "content/opi.h"

#include <span>
#include <string>
#include <string_view>

#include "api/current_job.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "ps/device_parameters.h"
#include "ps/output.h"

namespace zorvan {
namespace {

std::string TextOf(PdfObject string) {
    const auto bytes = StringBytes(string);
    return OnOneLine({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

std::string NameTextOf(PdfObject name) {
    return OnOneLine(std::string(CurrentNames().PlainText(NameOf(name))));
}

/// A file name without the line continuations that a literal string may have.
std::string WithoutContinuations(PdfObject string) {
    const auto bytes = StringBytes(string);
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const bool continued =
            bytes[i] == '\\' && i + 1 < bytes.size() && (bytes[i + 1] == '\r' || bytes[i + 1] == '\n');
        if (continued) {
            ++i;
        } else {
            text.push_back(static_cast<char>(bytes[i]));
        }
    }
    return OnOneLine(std::move(text));
}

/// The comments of one version dictionary, in one piece. A key that is absent, or whose value is not of the
/// kind or the length that the comment wants, gives no line.
class OpiComments {
public:
    explicit OpiComments(PdfObject entries) : entries_(entries) {}

    Status Write() const { return piece_.Write(); }
    void Text(std::string_view text) { piece_.Append(text); }

    /// A file specification is a string, or a dictionary that holds one.
    void File(std::string_view comment) {
        const Resolved value(DictGet(entries_, names::kF));
        const Resolved inner(DictGet(value.Get(), names::kF));
        const PdfObject name = Is(value.Get(), ObjectType::kDictionary) ? inner.Get() : value.Get();
        if (Is(name, ObjectType::kString)) {
            piece_.Append(comment).Append(WithoutContinuations(name)).Append("\n");
        }
    }

    void Numbers(std::uint32_t key, std::uint32_t count, std::string_view comment) {
        const Resolved array(DictGet(entries_, key));
        if (Is(array.Get(), ObjectType::kArray) && ArrayCount(array.Get()) == count) {
            AppendNumbers(comment, array.Get(), count);
            piece_.Append("\n");
        }
    }

    void AllNumbers(std::uint32_t key, std::string_view comment) {
        const Resolved array(DictGet(entries_, key));
        if (Is(array.Get(), ObjectType::kArray)) {
            AppendNumbers(comment, array.Get(), ArrayCount(array.Get()));
            piece_.Append("\n");
        }
    }

    void Integers(std::uint32_t key, std::uint32_t count, std::string_view comment) {
        const Resolved array(DictGet(entries_, key));
        if (!Is(array.Get(), ObjectType::kArray) || ArrayCount(array.Get()) != count) {
            return;
        }
        piece_.Append(comment);
        for (std::uint32_t i = 0; i < count; ++i) {
            piece_.AppendInteger(IntegerOf(Resolved(ArrayGet(array.Get(), i)).Get())).Append(" ");
        }
        piece_.Append("\n");
    }

    /// Four numbers and the text of a fifth element.
    void Color() {
        const Resolved array(DictGet(entries_, names::kColor));
        if (!Is(array.Get(), ObjectType::kArray) || ArrayCount(array.Get()) != 5) {
            return;
        }
        AppendNumbers("%ALDImageColor: ", array.Get(), 4);
        const Resolved name(ArrayGet(array.Get(), 4));
        if (Is(name.Get(), ObjectType::kString)) {
            AppendStringText(piece_, TextOf(name.Get()));
        }
        piece_.Append("\n");
    }

    void Name(std::uint32_t key, std::string_view comment) {
        const Resolved name(DictGet(entries_, key));
        if (Is(name.Get(), ObjectType::kName)) {
            piece_.Append(comment).Append(NameTextOf(name.Get())).Append("\n");
        }
    }

    void String(std::uint32_t key, std::string_view comment) {
        const Resolved string(DictGet(entries_, key));
        if (Is(string.Get(), ObjectType::kString)) {
            piece_.Append(comment).Append(TextOf(string.Get())).Append("\n");
        }
    }

    void Number(std::uint32_t key, std::string_view comment) {
        const Resolved number(DictGet(entries_, key));
        if (IsNumber(number.Get())) {
            piece_.Append(comment).AppendOperand(number.Get()).Append("\n");
        }
    }

    void Integer(std::uint32_t key, std::string_view comment) {
        const Resolved number(DictGet(entries_, key));
        if (IsNumber(number.Get())) {
            piece_.Append(comment).AppendInteger(IntegerOf(number.Get())).Append("\n");
        }
    }

    void Boolean(std::uint32_t key, std::string_view comment) {
        const Resolved flag(DictGet(entries_, key));
        if (Is(flag.Get(), ObjectType::kBoolean)) {
            piece_.Append(comment).Append(BooleanOf(flag.Get()) ? "true\n" : "false\n");
        }
    }

    /// A line for each pair of a tag's number and its text; `append` takes the text.
    template <class AppendText>
    void Tags(std::string_view comment, const AppendText& append) {
        const Resolved array(DictGet(entries_, names::kTags));
        for (std::uint32_t i = 0; i + 1 < ArrayCount(array.Get()); i += 2) {
            const Resolved tag(ArrayGet(array.Get(), i));
            const Resolved text(ArrayGet(array.Get(), i + 1));
            if (Is(tag.Get(), ObjectType::kInteger) && Is(text.Get(), ObjectType::kString)) {
                piece_.Append(comment).AppendInteger(IntegerOf(tag.Get()));
                append(piece_, TextOf(text.Get()));
                piece_.Append("\n");
            }
        }
    }

    void Inks() {
        const Resolved inks(DictGet(entries_, names::kInks));
        const std::string_view name = CurrentNames().PlainText(NameOf(inks.Get()));
        if (name == "full_color" || name == "registration") {
            piece_.Append("%%ImageInks: ").Append(name).Append("\n");
        } else if (Is(inks.Get(), ObjectType::kArray)) {
            MonochromeInks(inks.Get());
        }
    }

private:
    void AppendNumbers(std::string_view comment, PdfObject array, std::uint32_t count) {
        piece_.Append(comment);
        for (std::uint32_t i = 0; i < count; ++i) {
            piece_.AppendOperand(Resolved(ArrayGet(array, i)).Get()).Append(" ");
        }
    }

    void MonochromeInks(PdfObject inks) {
        const Resolved kind(ArrayGet(inks, 0));
        if (CurrentNames().PlainText(NameOf(kind.Get())) != "monochrome") {
            return;
        }
        const std::uint32_t pairs = (ArrayCount(inks) - 1) / 2;
        piece_.Append("%%ImageInks: monochrome ").AppendUnsigned(pairs).Append(" ");
        for (std::uint32_t i = 0; i < pairs; ++i) {
            const Resolved ink(ArrayGet(inks, 1 + 2 * i));
            const Resolved tint(ArrayGet(inks, 2 + 2 * i));
            AppendStringText(piece_, TextOf(ink.Get()));
            piece_.Append(" ").AppendOperand(tint.Get()).Append(" ");
        }
        piece_.Append("\n");
    }

    PdfObject entries_;
    OutputPiece piece_;
};

// The two versions differ in their percent signs, too: hosts look for these very lines.

void Append13(OpiComments& comments) {
    comments.Text("%%BeginOPI: 1.3\n");
    comments.File("%ALDImageFilename: ");
    comments.Numbers(names::kCropRect, 4, "%ALDImageCropRect: ");
    comments.Color();
    comments.Name(names::kColorType, "%ALDImageColorType: ");
    comments.Numbers(names::kCropFixed, 4, "%ALDImageCropFixed: ");
    comments.AllNumbers(names::kGrayMap, "%ALDImageGrayMap: ");
    comments.String(names::kID, "%ALDImageID: ");
    comments.Integers(names::kImageType, 2, "%ALDImageType: ");
    comments.Boolean(names::kOverprint, "%ALDImageOverprint: ");
    comments.Numbers(names::kPosition, 8, "%ALDImagePosition: ");
    comments.Numbers(names::kResolution, 2, "%ALDImageResolution: ");
    comments.Integers(names::kSize, 2, "%ALDImageDimensions: ");
    comments.Tags("%ALDImageASCIITag",
                  [](OutputPiece& line, const std::string& text) { line.Append(": ").Append(text); });
    comments.Number(names::kTint, "%ALDImageTint: ");
    comments.Boolean(names::kTransparency, "%ALDImageTransparency: ");
    comments.Text("%%BeginObject: image\n");
}

void Append20(OpiComments& comments) {
    comments.File("%%ImageFileName: ");
    comments.Numbers(names::kSize, 2, "%%ImageDimensions: ");
    comments.Numbers(names::kCropRect, 4, "%%ImageCropRect: ");
    comments.Numbers(names::kIncludedImageDimensions, 2, "%%IncludedImageDimensions: ");
    comments.Integer(names::kIncludedImageQuality, "%%IncludedImageQuality: ");
    comments.Inks();
    comments.String(names::kMainImage, "%%MainImage: ");
    comments.Boolean(names::kOverprint, "%%ImageOverprint: ");
    comments.Tags("%%TIFFASCIITag: ", [](OutputPiece& line, const std::string& text) {
        AppendStringText(line.Append(" "), text);
    });
}

}  // namespace

OpiBracket::OpiBracket(PdfObject dictionary) {
    const Resolved opi(DictGet(dictionary, names::kOPI));
    for (const auto& [key, version] :
         {std::pair{names::kVersion13, Version::k13}, std::pair{names::kVersion20, Version::k20}}) {
        const Resolved entries(DictGet(opi.Get(), key));
        if (version_ == Version::kNone && Is(entries.Get(), ObjectType::kDictionary)) {
            version_ = version;
            entries_ = OwnedObject(CloneObject(entries.Get()));
        }
    }
}

Status OpiBracket::Begin() const {
    OpiComments comments(entries_.Get());
    switch (version_) {
        case Version::k13:
            RETURN_IF_FAILED(WriteOutput("save\n"));
            Append13(comments);
            return comments.Write();
        case Version::k20:
            RETURN_IF_FAILED(WriteOutput("save\n%%BeginOPI: 2.0\n"));
            Append20(comments);
            return comments.Write();
        default:
            return Status::kOk;
    }
}

Status OpiBracket::End() const {
    switch (version_) {
        case Version::k13:
            return WriteOutput("%%EndObject\nrestore\n");
        case Version::k20:
            return WriteOutput("%%EndIncludedImage\n%%EndOPI\nrestore\n");
        default:
            return Status::kOk;
    }
}

}  // namespace zorvan
