// Which class builds the resources of which category.
#pragma once

#include "ps/resource.h"

namespace zorvan {

/// The factories of the classes that are built in; null where there is none yet.
ResourceFactories BuiltInFactories();

}  // namespace zorvan
