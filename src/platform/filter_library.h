// The loaded codec library: its eight entry points, looked up by name when the job begins.
#pragma once

#include <string>

#include "api/status.h"
#include "platform/loadable_module.h"
#include "zorvan/filter.h"

namespace zorvan {

class FilterLibrary {
public:
    /// Loads `folder` + "Filter.dll", with no separator put between. kFailLoadDll when it cannot be loaded;
    /// kIllegalFunction, deliberately the error of functions, when an entry point is missing.
    Status Load(const std::string& folder);

    CreateEncoderFunction createEncoder = nullptr;
    EncodeDataFunction encodeData = nullptr;
    EncodeEodFunction encodeEod = nullptr;
    FlushFunction flush = nullptr;
    DestroyEncoderFunction destroyEncoder = nullptr;
    CreateDecoderFunction createDecoder = nullptr;
    DecodeDataFunction decodeData = nullptr;
    DestroyDecoderFunction destroyDecoder = nullptr;

private:
    template <class Function>
    bool Find(const char* name, Function& function);

    LoadableModule module_;
};

}  // namespace zorvan
