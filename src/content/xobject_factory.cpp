// Building XObjects.
#include "content/xobject_factory.h"

#include "content/form_xobject.h"
#include "content/image_xobject.h"
#include "content/postscript_xobject.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"

namespace zorvan {

std::unique_ptr<Resource> CreateXObjectResource(const ResourceRequest& request) {
    const Resolved value(request.value);
    if (!Is(value.Get(), ObjectType::kStream)) {
        return nullptr;
    }
    const Resolved subtype(DictGet(StreamDictionary(value.Get()), names::kSubtype));
    OwnedObject stream(CloneObject(value.Get()));
    switch (NameOf(subtype.Get())) {
        case names::kImage:
            return std::make_unique<ImageXObject>(request.key, std::move(stream));
        case names::kForm:
            return std::make_unique<FormXObject>(request.key, std::move(stream));
        case names::kPS:
            return std::make_unique<PostScriptXObject>(request.key, std::move(stream));
        default:
            return nullptr;
    }
}

}  // namespace zorvan
