// The prolog texts, built in.
#include "ps/prolog.h"
#include "ps/prolog_data.h"

namespace zorvan {

const Prolog* BuiltInProlog() {
    static const Prolog prolog{kPrologResources};
    return &prolog;
}

}  // namespace zorvan
