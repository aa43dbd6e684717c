// The CCITTFax encoder: rows into code words.
#include <algorithm>

#include "filter/ccitt.h"
#include "filter/ccitt_bits.h"
#include "filter/ccitt_codes.h"
#include "filter/ccitt_parameters.h"
#include "filter/ccitt_row.h"

namespace zorvan::filter {
namespace {

class CcittEncoder : public Encoder {
public:
    CcittEncoder(const EncoderSetup& setup, const CcittParameters& parameters)
        : Encoder(setup), parameters_(parameters), row_(parameters.columns), above_(parameters.columns) {}

    // False when memory is lacking.
    bool Open() { return row_.Open() && above_.Open(); }

private:
    void EncodeBytes(Bytes bytes) override {
        for (const std::uint8_t byte : bytes) {
            row_.Bytes()[fill_++] = parameters_.blackIs1 ? byte : static_cast<std::uint8_t>(~byte);
            if (fill_ == parameters_.RowBytes()) {
                EncodeRow();
            }
        }
    }

    // A row that was begun is filled up with white.
    void EncodeEnd() override {
        if (fill_ > 0) {
            std::ranges::fill(row_.Bytes().subspan(fill_), std::uint8_t{0});
            EncodeRow();
        }
        if (parameters_.endOfBlock) {
            PutEndOfBlock();
        }
        bits_.AlignBefore(0);
        above_.Clear();
        rowsLeftOfGroup_ = 0;
    }

    void EncodeRow() {
        scanner_.Restart();
        aboveScanner_.Restart();
        const bool twoDimensional = parameters_.IsGroup4() || rowsLeftOfGroup_ > 0;
        BeginRow(twoDimensional);
        if (twoDimensional) {
            EncodeAgainstRowAbove();
        } else {
            EncodeRuns();
        }
        rowsLeftOfGroup_ = rowsLeftOfGroup_ > 0 ? rowsLeftOfGroup_ - 1 : std::max(parameters_.k, 1) - 1;
        row_.Swap(above_);
        fill_ = 0;
    }

    // An end-of-line code before an aligned row ends a byte, so that the row (or its tag) begins one.
    void BeginRow(bool twoDimensional) {
        if (parameters_.encodedByteAlign) {
            bits_.AlignBefore(parameters_.endOfLine ? kEndOfLineCode.length : 0);
        }
        if (parameters_.endOfLine) {
            PutEndOfLine(twoDimensional);
        }
    }

    // The tag belongs to the code: without codes, the first of every K rows is one-dimensional.
    void PutEndOfLine(bool twoDimensional) {
        bits_.Put(kEndOfLineCode);
        if (parameters_.IsMixed()) {
            bits_.Put(CcittCode(twoDimensional ? "0" : "1"));
        }
    }

    void PutEndOfBlock() {
        if (parameters_.encodedByteAlign) {
            bits_.AlignBefore(0);
        }
        for (unsigned int i = 0; i < parameters_.EndOfBlockLines(); ++i) {
            PutEndOfLine(false);
        }
    }

    void EncodeRuns() {
        std::size_t column = 0;
        for (bool black = false; column < parameters_.columns; black = !black) {
            const std::size_t end = scanner_.Find(!black, column);
            PutRun(black, end - column);
            column = end;
        }
    }

    void PutRun(bool black, std::size_t run) {
        for (; run >= kLongestMakeUp + kFirstMakeUp; run -= kLongestMakeUp) {
            bits_.Put(RunCode(black, kLongestMakeUp));
        }
        if (run >= kFirstMakeUp) {
            bits_.Put(RunCode(black, run / kFirstMakeUp * kFirstMakeUp));
        }
        bits_.Put(RunCode(black, run % kFirstMakeUp));
    }

    void EncodeAgainstRowAbove() {
        std::size_t column = 0;
        bool black = false;
        bool atBeginning = true;
        while (column < parameters_.columns) {
            const CcittScanner::Changes changes = aboveScanner_.FindChanges(black, column, atBeginning);
            const std::size_t change = scanner_.Find(!black, column);
            atBeginning = false;
            if (changes.second < change) {
                bits_.Put(PassCode());
                column = changes.second;
            } else if (PutVertical(change, changes.first)) {
                black = !black;
                column = change;
            } else {
                column = PutHorizontal(black, column, change);
            }
        }
    }

    // Whether the change lies near enough to that of the row above.
    bool PutVertical(std::size_t change, std::size_t changeAbove) {
        const auto shift = static_cast<std::ptrdiff_t>(change) - static_cast<std::ptrdiff_t>(changeAbove);
        if (shift < -kLargestShift || shift > kLargestShift) {
            return false;
        }
        bits_.Put(VerticalCode(static_cast<int>(shift)));
        return true;
    }

    // Two runs; the result is the column behind them.
    std::size_t PutHorizontal(bool black, std::size_t begin, std::size_t change) {
        const std::size_t end = scanner_.Find(black, change);
        bits_.Put(HorizontalCode());
        PutRun(black, change - begin);
        PutRun(!black, end - change);
        return end;
    }

    const CcittParameters parameters_;
    CcittBitWriter bits_{Sink()};
    CcittRow row_;
    CcittRow above_;
    CcittScanner scanner_{row_};
    CcittScanner aboveScanner_{above_};
    std::size_t fill_ = 0;
    int rowsLeftOfGroup_ = 0;
};

}  // namespace

std::unique_ptr<Encoder> NewCcittEncoder(const EncoderSetup& setup) {
    const auto parameters = ReadCcittParameters(setup.parameters);
    if (!parameters) {
        return nullptr;
    }
    return NewOpenCodec<CcittEncoder>(setup, *parameters);
}

}  // namespace zorvan::filter
