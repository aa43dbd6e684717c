// The standard security handler at revision 2 (PDF Reference, section 3.5): a 40-bit key from the password,
// and with it a key for each object.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "api/status.h"
#include "pdf/byte_scan.h"
#include "pdf/object.h"
#include "pdf/rc4.h"

namespace zorvan {

class PdfFile;

using FileIdentifier = std::array<std::uint8_t, 16>;

class SecurityState {
public:
    /// Takes the trailer's `Encrypt` value, a reference or a dictionary, and the file's first identifier.
    /// Failures are recorded: kUnknownSecurityHandler for another handler or revision, kCheckPassword when
    /// the password neither opens the file for printing nor is its owner's.
    Status InitSecurity(const PdfFile& file, PdfObject encrypt, const FileIdentifier& identifier,
                        Bytes password);

    /// True once a file is open with it: streams and strings are to be decrypted.
    [[nodiscard]] bool IsActive() const { return active_; }

    /// Starts the keystream of an object.
    void SetObjectKey(std::uint32_t number, std::uint16_t generation);
    /// Runs it over `input`; `output` has room for as much.
    void Rc4Apply(Bytes input, std::uint8_t* output) { rc4_.Apply(input, output); }
    /// The bytes of a literal string from its text, decrypted.
    std::vector<std::uint8_t> DecryptLiteralString(Bytes text);
    /// The same for the digits of a hexadecimal one.
    std::vector<std::uint8_t> DecryptHexadecimalString(Bytes text);

private:
    static constexpr std::size_t kPasswordSize = 32;
    static constexpr std::size_t kKeySize = 5;
    using PaddedPassword = std::array<std::uint8_t, kPasswordSize>;
    using Key = std::array<std::uint8_t, kKeySize>;

    static PaddedPassword Pad(Bytes password);
    static Key KeyOf(Bytes text);
    /// Sets the file key that a user password makes, and tells whether it is the right one.
    bool IsUserPassword(Bytes password);
    bool IsOwnerPassword(Bytes password);
    [[nodiscard]] bool IsAccepted(Bytes password);

    FileIdentifier identifier_{};
    PaddedPassword owner_{};  // O
    PaddedPassword user_{};   // U
    std::uint32_t permissions_ = 0;
    Key key_{};
    Rc4 rc4_;
    bool active_ = false;
};

}  // namespace zorvan
