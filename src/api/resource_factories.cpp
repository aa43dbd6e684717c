// The table of factories: the one place that knows every resource class.
#include "api/resource_factories.h"

#include "fonts/font_resource.h"

namespace zorvan {

ResourceFactories BuiltInFactories() {
    ResourceFactories factories{};
    factories[ListOf(ResourceCategory::kFont)] = CreateFontResource;
    return factories;
}

}  // namespace zorvan
