// Looking up the codec library's entry points.
#include "platform/filter_library.h"

namespace zorvan {

template <class Function>
bool FilterLibrary::Find(const char* name, Function& function) {
    function = reinterpret_cast<Function>(module_.Find(name));
    return function != nullptr;
}

Status FilterLibrary::Load(const std::string& folder) {
    if (!module_.Load(folder + "Filter.dll")) {
        return Status::kFailLoadDll;
    }
    const bool complete = Find("CreateEncoder", createEncoder) && Find("EncodeData", encodeData) &&
                          Find("Encode_EOD", encodeEod) && Find("Flush", flush) &&
                          Find("DestroyEncoder", destroyEncoder) && Find("CreateDecoder", createDecoder) &&
                          Find("DecodeData", decodeData) && Find("DestroyDecoder", destroyDecoder);
    return complete ? Status::kOk : Status::kIllegalFunction;
}

}  // namespace zorvan
