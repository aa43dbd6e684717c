// The table of factories: the one place that knows every resource class.
#include "api/resource_factories.h"

namespace zorvan {

ResourceFactories BuiltInFactories() {
    return {};  // no class yet: vector pages in device colours name no resource
}

}  // namespace zorvan
