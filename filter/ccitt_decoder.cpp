// The CCITTFax decoder: code words into rows, over damaged ones where there is a way on.
#include <algorithm>

#include "filter/ccitt.h"
#include "filter/ccitt_bits.h"
#include "filter/ccitt_codes.h"
#include "filter/ccitt_parameters.h"
#include "filter/ccitt_row.h"

namespace zorvan::filter {
namespace {

// A row that is damaged is given up. Group 3 data with end-of-line codes goes on behind the next one: what
// was given up looks like the row above it (white, if there is none), and so do, in mixed data, the rows
// behind it that are coded against it. Other data has no place to go on at: the pixels before the damage
// are delivered, as whole bytes, and the data is damaged for good.
//
// Bits that are no code word within the last bytes of the data are not damage but its end, cut off or padded.
class CcittDecoder : public Decoder {
public:
    CcittDecoder(const DecoderSetup& setup, const CcittParameters& parameters)
        : Decoder(setup), parameters_(parameters), row_(parameters.columns), above_(parameters.columns) {}

    // False when memory is lacking.
    bool Open() { return row_.Open() && above_.Open(); }

private:
    Progress DecodeBytes(Output& output) override {
        while (!output.IsFull()) {
            if (delivered_ < ready_) {
                Deliver(output);
            } else if (progress_ != Progress::kMore) {
                return progress_;
            } else {
                DecodeRow();
            }
        }
        return Progress::kMore;
    }

    void Deliver(Output& output) {
        const std::span<std::uint8_t> space = output.Space();
        const Bytes rest = row_.Bytes().subspan(delivered_, ready_ - delivered_);
        const std::size_t count = std::min(space.size(), rest.size());
        const std::uint8_t flip = parameters_.blackIs1 ? 0 : 0xFF;
        std::transform(rest.begin(), rest.begin() + static_cast<std::ptrdiff_t>(count), space.begin(),
                       [flip](std::uint8_t byte) { return static_cast<std::uint8_t>(byte ^ flip); });
        output.Advance(count);
        delivered_ += count;
    }

    // Makes the next row ready, or as much of it as there is, or none, and then notes how the data ends.
    void DecodeRow() {
        delivered_ = 0;
        ready_ = 0;
        column_ = 0;
        if (HasAllRows() || !FindRow()) {
            progress_ = Progress::kEnd;
            return;
        }
        row_.Swap(above_);
        row_.Clear();
        scanner_.Restart();
        ++rowCount_;
        const bool sound = !(twoDimensional_ && isAboveLost_) && DecodeCodes();
        if (sound || Recover()) {
            isAboveLost_ = !sound;
            ready_ = parameters_.RowBytes();
            return;
        }
        ready_ = column_ / 8;
    }

    bool HasAllRows() const {
        return !parameters_.endOfBlock && parameters_.rows > 0 && rowCount_ == parameters_.rows;
    }

    // Passes what stands between two rows, and settles how the next one is coded. False at the end.
    bool FindRow() {
        const unsigned int linesBefore = PassEndOfLines();
        if (linesBefore >= parameters_.EndOfBlockLines()) {
            return false;
        }
        if (linesBefore == 0 && areEndOfLinesRequired_ && !(SkipToEndOfLine() && TakeEndOfLine())) {
            return false;
        }
        if (!hasTag_) {
            twoDimensional_ = parameters_.IsGroup4() || rowsLeftOfGroup_ > 0;
        }
        rowsLeftOfGroup_ =
            twoDimensional_ ? std::max(rowsLeftOfGroup_ - 1, 0) : std::max(parameters_.k, 1) - 1;
        return bits_.Has(1);
    }

    // The end-of-line codes at hand, until they end the data. They are taken wherever they are met. That
    // there must be one before every row is believed only of data that begins with one.
    unsigned int PassEndOfLines() {
        // The zeros that fill a byte, and those that a row begins with, could be taken for those of a code:
        // it is looked for before the next byte only in data that has them.
        if (parameters_.encodedByteAlign && !hasEndOfLines_ && !parameters_.endOfLine) {
            bits_.Align();
        }
        hasTag_ = false;
        unsigned int count = 0;
        while (count < parameters_.EndOfBlockLines() && TakeEndOfLine()) {
            ++count;
        }
        if (count == 0 && parameters_.encodedByteAlign) {
            bits_.Align();
        }
        hasEndOfLines_ = hasEndOfLines_ || count > 0;
        areEndOfLinesRequired_ =
            areEndOfLinesRequired_ || (parameters_.endOfLine && rowCount_ == 0 && count > 0);
        return count;
    }

    // Any number of zeros may fill the time before the code's own.
    bool TakeEndOfLine() {
        if (!IsAtEndOfLine()) {
            return false;
        }
        while (bits_.Peek(1) == 0) {
            if (!bits_.Has(1)) {
                return false;
            }
            bits_.Skip(1);
        }
        bits_.Skip(1);
        hasTag_ = parameters_.IsMixed() && bits_.Has(1);
        if (hasTag_) {
            twoDimensional_ = bits_.Peek(1) == 0;
            bits_.Skip(1);
        }
        return true;
    }

    bool IsAtEndOfLine() { return bits_.Has(kEndOfLineZeros) && bits_.Peek(kEndOfLineZeros) == 0; }

    bool SkipToEndOfLine() {
        while (bits_.Has(kEndOfLineZeros)) {
            if (bits_.Peek(kEndOfLineZeros) == 0) {
                return true;
            }
            bits_.Skip(1);
        }
        return false;
    }

    // After damage: whether the row above takes the place of this one. Otherwise the data ends here.
    bool Recover() {
        constexpr unsigned int kPadding = 24;
        if (!bits_.Has(kPadding)) {
            progress_ = Progress::kEnd;
            return false;
        }
        if (parameters_.IsGroup4() || !hasEndOfLines_) {
            progress_ = HasRowsEnough() ? Progress::kEnd : Progress::kDamaged;
            return false;
        }
        row_.CopyFrom(above_);
        SkipToEndOfLine();
        return true;
    }

    // Data that lacks its end may have anything behind its rows.
    bool HasRowsEnough() const { return parameters_.rows > 0 && rowCount_ > parameters_.rows; }

    // Whether the codes make up a whole row; `column_` is how far they go.
    bool DecodeCodes() {
        black_ = false;
        return twoDimensional_ ? DecodeAgainstRowAbove() : DecodeRuns();
    }

    bool DecodeRuns() {
        for (; column_ < parameters_.columns; black_ = !black_) {
            if (!DecodeRun(black_)) {
                return false;
            }
        }
        return true;
    }

    // Make-up codes, as many as there are, and the terminating code.
    bool DecodeRun(bool black) {
        FoundRun found;
        do {
            found = FindRun(black, bits_.Peek(kLongestRunCode));
            if (!Take(found.length) || found.run > parameters_.columns - column_) {
                return false;
            }
            Extend(black, column_ + found.run);
        } while (found.run >= kFirstMakeUp);
        return true;
    }

    bool DecodeAgainstRowAbove() {
        for (bool atBeginning = true; column_ < parameters_.columns; atBeginning = false) {
            const FoundMode found = FindMode(bits_.Peek(kLongestModeCode));
            if (!Take(found.length) || !Apply(found, atBeginning)) {
                return false;
            }
        }
        return true;
    }

    bool Apply(FoundMode found, bool atBeginning) {
        if (found.mode == CcittMode::kHorizontal) {
            return DecodeRun(black_) && DecodeRun(!black_);
        }
        const CcittScanner::Changes changes = scanner_.FindChanges(black_, column_, atBeginning);
        if (found.mode == CcittMode::kPass) {
            Extend(black_, changes.second);
            return true;
        }
        const auto change = static_cast<std::ptrdiff_t>(changes.first) + found.shift;
        if (change < static_cast<std::ptrdiff_t>(column_) ||
            change > static_cast<std::ptrdiff_t>(parameters_.columns)) {
            return false;
        }
        Extend(black_, static_cast<std::size_t>(change));
        black_ = !black_;
        return true;
    }

    // Passes a code word, if there is one and all of its bits are there.
    bool Take(unsigned int length) {
        if (length == 0 || !bits_.Has(length)) {
            return false;
        }
        bits_.Skip(length);
        return true;
    }

    void Extend(bool black, std::size_t end) {
        if (black) {
            row_.Blacken(column_, end);
        }
        column_ = end;
    }

    const CcittParameters parameters_;
    CcittBitReader bits_{Source()};
    CcittRow row_;
    CcittRow above_;
    CcittScanner scanner_{above_};

    // The bytes of `row_` that may be delivered, and those that were; how it goes on behind them.
    std::size_t ready_ = 0;
    std::size_t delivered_ = 0;
    Progress progress_ = Progress::kMore;

    std::size_t rowCount_ = 0;
    bool hasEndOfLines_ = false;
    bool areEndOfLinesRequired_ = false;
    bool hasTag_ = false;
    bool twoDimensional_ = false;
    int rowsLeftOfGroup_ = 0;
    bool isAboveLost_ = false;

    std::size_t column_ = 0;
    bool black_ = false;
};

}  // namespace

std::unique_ptr<Decoder> NewCcittDecoder(const DecoderSetup& setup) {
    const auto parameters = ReadCcittParameters(setup.parameters);
    if (!parameters) {
        return NewCodec<DecoderOfNothing>(setup);
    }
    return NewOpenCodec<CcittDecoder>(setup, *parameters);
}

}  // namespace zorvan::filter
