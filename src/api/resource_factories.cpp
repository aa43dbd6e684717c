// The table of factories: the one place that knows every resource class.
#include "api/resource_factories.h"

#include "content/xobject_factory.h"
#include "fonts/font_resource.h"

namespace zorvan {

ResourceFactories BuiltInFactories() {
    ResourceFactories factories{};
    factories[ListOf(ResourceCategory::kFont)] = CreateFontResource;
    factories[ListOf(ResourceCategory::kXObject)] = CreateXObjectResource;
    return factories;
}

}  // namespace zorvan
