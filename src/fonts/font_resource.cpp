// The common part of the font classes.
#include "fonts/font_resource.h"

#include "api/current_job.h"
#include "pdf/object_parser.h"

namespace zorvan {

PdfObject FontResource::Reference() const {
    return MakeReference(Key().number, Key().generation);
}

void FontResource::SetNameFrom(std::uint32_t key, std::size_t limit) {
    const Resolved name(DictGet(Dictionary(), key));
    SetName(CurrentNames().NameText(NameOf(name.Get()), NameTextMode::kToken, limit));
}

}  // namespace zorvan
