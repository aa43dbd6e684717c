// Which class a font dictionary becomes.
#include "fonts/font_resource.h"
#include "fonts/true_type_font.h"
#include "fonts/type0_font.h"
#include "fonts/type1_font.h"
#include "fonts/type3_font.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"

namespace zorvan {

std::unique_ptr<Resource> CreateFontResource(const ResourceRequest& request) {
    const Resolved font(request.value);
    if (!Is(font.Get(), ObjectType::kDictionary)) {
        return nullptr;
    }
    const Resolved subtype(DictGet(font.Get(), names::kSubtype));
    FontSource source{request.key, OwnedObject(CloneObject(font.Get()))};
    switch (NameOf(subtype.Get())) {
        case names::kType1:
            return std::make_unique<Type1FontResource>(std::move(source));
        case names::kMMType1:
            return std::make_unique<MMType1FontResource>(std::move(source));
        case names::kTrueType:
            return std::make_unique<TrueTypeFontResource>(std::move(source));
        case names::kType0:
            return CreateType0Font(std::move(source));
        case names::kType3:
            return std::make_unique<Type3FontResource>(std::move(source));
        default:
            return nullptr;
    }
}

}  // namespace zorvan
