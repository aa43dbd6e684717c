// Passwords and keys (PDF Reference, algorithms 3.1 to 3.4, 3.6 and 3.7).
#include "pdf/security.h"

#include <algorithm>

#include "api/error_record.h"
#include "pdf/byte_buffer.h"
#include "pdf/md5.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "pdf/stream_reader.h"

namespace zorvan {
namespace {

constexpr std::int32_t kRevision = 2;
constexpr std::uint32_t kMayPrint = 4;

constexpr std::array<std::uint8_t, 32> kPadding = {
    0x28, 0xBF, 0x4E, 0x5E, 0x4E, 0x75, 0x8A, 0x41, 0x64, 0x00, 0x4E, 0x56, 0xFF, 0xFA, 0x01, 0x08,
    0x2E, 0x2E, 0x00, 0xB6, 0xD0, 0x68, 0x3E, 0x80, 0x2F, 0x0C, 0xA9, 0xFE, 0x64, 0x53, 0x69, 0x7A};

/// What a letter behind a backslash stands for, as far as one letter tells; 0 for any other.
std::uint8_t NamedEscape(std::uint8_t letter) {
    switch (letter) {
        case 'b':
            return '\b';
        case 'f':
            return '\f';
        case 'n':
            return '\n';
        case 'r':
            return '\r';
        case 't':
            return '\t';
        case '(':
        case ')':
        case '\\':
            return letter;
        default:
            return 0;
    }
}

/// Files were written with the digit 8 in such escapes, and are read with it.
bool IsEscapeDigit(std::uint8_t letter) {
    return letter >= '0' && letter <= '8';
}

/// Takes up to three digits from behind a backslash.
std::uint8_t TakeOctal(Bytes text, std::size_t& position) {
    std::uint32_t value = 0;
    for (int digits = 0; digits < 3 && position < text.size() && IsEscapeDigit(text[position]); ++digits) {
        value = value * 8 + (text[position++] - static_cast<std::uint32_t>('0'));
    }
    return static_cast<std::uint8_t>(value);
}

/// The bytes of a password entry; what its text lacks is zero.
std::array<std::uint8_t, 32> ReadPasswordEntry(Bytes text) {
    std::array<std::uint8_t, 32> bytes{};
    std::size_t position = 0;
    for (std::uint8_t& byte : bytes) {
        if (position == text.size()) {
            break;
        }
        byte = text[position++];
        if (byte != '\\' || position == text.size()) {
            continue;
        }
        const std::uint8_t escape = text[position];
        if (IsEscapeDigit(escape)) {
            byte = TakeOctal(text, position);
            continue;
        }
        ++position;
        byte = NamedEscape(escape) != 0 ? NamedEscape(escape) : escape;
    }
    return bytes;
}

}  // namespace

Status SecurityState::InitSecurity(const PdfFile& file, PdfObject encrypt, const FileIdentifier& identifier,
                                   Bytes password) {
    OwnedObject resolved;
    if (IsReference(encrypt)) {
        resolved = OwnedObject(ResolveReference(file, encrypt));
        encrypt = resolved.Get();
    }
    const PdfObject revision = DictGet(encrypt, names::kR);
    if (NameOf(DictGet(encrypt, names::kFilter)) != names::kStandard || !Is(revision, ObjectType::kInteger) ||
        IntegerOf(revision) != kRevision) {
        return Fail(Status::kUnknownSecurityHandler);
    }
    identifier_ = identifier;
    owner_ = ReadPasswordEntry(StringBytes(DictGet(encrypt, names::kO)));
    user_ = ReadPasswordEntry(StringBytes(DictGet(encrypt, names::kU)));
    permissions_ = static_cast<std::uint32_t>(IntegerOf(DictGet(encrypt, names::kP)));
    if (!IsAccepted(password)) {
        return Fail(Status::kCheckPassword);
    }
    active_ = true;
    return Status::kOk;
}

/// A user's password opens the file only for printing, the owner's always.
bool SecurityState::IsAccepted(Bytes password) {
    if (IsUserPassword(password) && (permissions_ & kMayPrint) != 0) {
        return true;
    }
    return IsOwnerPassword(password);
}

SecurityState::PaddedPassword SecurityState::Pad(Bytes password) {
    PaddedPassword padded{};
    const Bytes kept = password.first(std::min(password.size(), padded.size()));
    const auto rest = std::copy(kept.begin(), kept.end(), padded.begin());
    std::copy_n(kPadding.begin(), padded.end() - rest, rest);
    return padded;
}

SecurityState::Key SecurityState::KeyOf(Bytes text) {
    const auto digest = Md5(text);
    Key key{};
    std::copy_n(digest.begin(), key.size(), key.begin());
    return key;
}

bool SecurityState::IsUserPassword(Bytes password) {
    const PaddedPassword padded = Pad(password);
    std::vector<std::uint8_t> text(padded.begin(), padded.end());
    text.insert(text.end(), owner_.begin(), owner_.end());
    for (unsigned shift = 0; shift < 32; shift += 8) {
        text.push_back(static_cast<std::uint8_t>(permissions_ >> shift));
    }
    text.insert(text.end(), identifier_.begin(), identifier_.end());
    key_ = KeyOf(text);
    PaddedPassword decrypted{};
    Rc4(key_).Apply(user_, decrypted.data());
    return decrypted == kPadding;
}

bool SecurityState::IsOwnerPassword(Bytes password) {
    PaddedPassword decrypted{};
    Rc4(KeyOf(Pad(password))).Apply(owner_, decrypted.data());
    return IsUserPassword(decrypted);
}

void SecurityState::SetObjectKey(std::uint32_t number, std::uint16_t generation) {
    std::array<std::uint8_t, kKeySize + 5> text{};
    std::copy(key_.begin(), key_.end(), text.begin());
    for (unsigned i = 0; i < 3; ++i) {
        text[kKeySize + i] = static_cast<std::uint8_t>(number >> (8 * i));
    }
    text[kKeySize + 3] = static_cast<std::uint8_t>(generation);
    text[kKeySize + 4] = static_cast<std::uint8_t>(generation >> 8U);
    const auto digest = Md5(text);
    rc4_ = Rc4(Bytes(digest).first(text.size()));
}

std::vector<std::uint8_t> SecurityState::DecryptLiteralString(Bytes text) {
    std::vector<std::uint8_t> bytes;
    for (std::size_t position = 0; position < text.size(); ++position) {
        const std::uint8_t letter = text[position];
        if (letter != '\\' || position + 1 == text.size()) {
            bytes.push_back(letter);
            continue;
        }
        const std::uint8_t escape = text[++position];
        if (NamedEscape(escape) != 0) {
            bytes.push_back(NamedEscape(escape));
            continue;
        }
        // Three letters, whatever they are, by their codes and not by the digits' values: octal 101 gives
        // 241. Documents are written for readers that do so.
        std::uint32_t value = escape;
        for (int more = 0; more < 2; ++more) {
            value = value * 8 + (position + 1 < text.size() ? text[++position] : 0U);
        }
        bytes.push_back(static_cast<std::uint8_t>(value));
    }
    Rc4Apply(bytes, bytes.data());
    return bytes;
}

std::vector<std::uint8_t> SecurityState::DecryptHexadecimalString(Bytes text) {
    ByteBuffer decoded;
    zorvan::DecodeHexadecimalString(text, decoded);
    std::vector<std::uint8_t> bytes(decoded.Size());
    Rc4Apply(decoded.Bytes(), bytes.data());
    return bytes;
}

}  // namespace zorvan
