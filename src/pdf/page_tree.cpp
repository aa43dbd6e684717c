// The depth-first walk, with inherited values shared between the nodes that inherit them.
#include "pdf/page_tree.h"

#include <cmath>
#include <optional>
#include <unordered_set>
#include <vector>

#include "api/error_record.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "pdf/pdf_file.h"
#include "platform/limits.h"
#include "platform/seeded_hash.h"

namespace zorvan {
namespace {

using SharedValue = std::shared_ptr<const OwnedObject>;

/// What a node hands down; null and empty for what none of its ancestors has.
struct Inherited {
    SharedValue mediaBox;
    SharedValue cropBox;
    SharedValue bleedBox;  // inheritable here, although the format does not say so: boxes are treated alike
    SharedValue resources;
    std::optional<std::int32_t> rotation;
};

/// Null values count as absent, as everywhere in the format, and so do references to objects that do not
/// exist.
bool IsAbsent(PdfObject value) {
    return IsNull(Resolved(value).Get());
}

bool Has(PdfObject dictionary, std::uint32_t key) {
    return !IsAbsent(DictGet(dictionary, key));
}

void HandDown(SharedValue& value, PdfObject dictionary, std::uint32_t key) {
    if (Has(dictionary, key)) {
        value = std::make_shared<const OwnedObject>(CloneObject(DictGet(dictionary, key)));
    }
}

Inherited FromNode(const Inherited& above, PdfObject dictionary) {
    Inherited inherited = above;
    HandDown(inherited.mediaBox, dictionary, names::kMediaBox);
    HandDown(inherited.cropBox, dictionary, names::kCropBox);
    HandDown(inherited.bleedBox, dictionary, names::kBleedBox);
    HandDown(inherited.resources, dictionary, names::kResources);
    if (Has(dictionary, names::kRotate)) {
        // The payload as it stands: a reference is deliberately not resolved here.
        inherited.rotation = static_cast<std::int32_t>(PayloadOf(DictGet(dictionary, names::kRotate)));
    }
    return inherited;
}

PdfObject OwnOrInherited(PdfObject dictionary, std::uint32_t key, const SharedValue& inherited) {
    if (Has(dictionary, key)) {
        return DictGet(dictionary, key);
    }
    return inherited == nullptr ? MakeNull() : inherited->Get();
}

Box ReadBox(PdfObject value) {
    const Resolved array(value);
    Box box{};
    for (std::uint32_t i = 0; i < box.size(); ++i) {
        box[i] = NumberOf(Resolved(ArrayGet(array.Get(), i)).Get());
    }
    return box;
}

/// A bleed box wins over a crop box, on purpose: what is printed is trimmed later.
Box PageBox(PdfObject page, const Inherited& inherited) {
    PdfObject value = OwnOrInherited(page, names::kBleedBox, inherited.bleedBox);
    if (IsAbsent(value)) {
        value = OwnOrInherited(page, names::kCropBox, inherited.cropBox);
    }
    return ReadBox(IsAbsent(value) ? OwnOrInherited(page, names::kMediaBox, inherited.mediaBox) : value);
}

std::int32_t Rotation(PdfObject page, const Inherited& inherited) {
    const double degrees = Has(page, names::kRotate)
                               ? IntegerOf(Resolved(DictGet(page, names::kRotate)).Get())
                               : inherited.rotation.value_or(0);
    return TruncateToInteger(std::fmod(degrees, 360.0));
}

void SettleResources(PageAttributes& page, const Inherited& inherited) {
    const PdfObject own = DictGet(page.dictionary, names::kResources);
    {
        const Resolved resolved(own);
        const bool isDictionary = Is(resolved.Get(), ObjectType::kDictionary);
        if (isDictionary && DictSlotCount(resolved.Get()) > 0) {
            page.resources = own;
            return;
        }
        if (!isDictionary && !IsNull(resolved.Get())) {
            return;  // a value of another type gives no resources at all
        }
    }
    if (inherited.resources != nullptr) {
        page.resources = inherited.resources->Get();
        page.inheritedResources = inherited.resources;
    }
}

class PageTreeWalk {
public:
    PageTreeWalk(const PdfFile& file, PageReceiver& receiver) : file_(file), receiver_(receiver) {}

    Status Walk(PdfObject root) {
        RETURN_IF_FAILED(Visit(root, Inherited()));
        while (!path_.empty()) {
            // Not a reference to the node: visiting a kid may move the nodes of the path.
            const std::size_t depth = path_.size() - 1;
            if (path_[depth].next == ArrayCount(path_[depth].kids.Get())) {
                onPath_.erase(KeyOf(path_[depth].reference));
                path_.pop_back();
                continue;
            }
            const PdfObject kid = ArrayGet(path_[depth].kids.Get(), path_[depth].next++);
            if (IsReference(kid)) {  // a direct dictionary is no page
                RETURN_IF_FAILED(Visit(kid, path_[depth].inherited));
            }
        }
        return Status::kOk;
    }

private:
    /// A node on the way from the root to where the walk is.
    struct Node {
        PdfObject reference;
        OwnedObject kids;
        Inherited inherited;  // by its kids
        std::uint32_t next = 0;
    };

    static std::uint64_t KeyOf(PdfObject reference) {
        return ReferenceKey(reference.payload, reference.type);
    }

    Status Visit(PdfObject reference, const Inherited& inherited) {
        if (++visited_ > limits::kPageTreeNodes) {
            return Fail(Status::kInvalidDataType, reference);
        }
        if (onPath_.contains(KeyOf(reference))) {
            return Status::kOk;  // its own descendant: the branch ends, before it is read again
        }
        const OwnedObject node(ResolveReference(file_, reference));
        if (!Is(node.Get(), ObjectType::kDictionary)) {
            return Status::kOk;
        }
        const std::uint32_t type = NameOf(Resolved(DictGet(node.Get(), names::kType)).Get());
        if (type == names::kPages) {
            return Enter(reference, node.Get(), inherited);
        }
        if (type != names::kPage) {
            return Fail(Status::kInvalidDataType, reference);
        }
        PageAttributes page;
        page.reference = reference;
        page.dictionary = node.Get();
        page.box = PageBox(node.Get(), inherited);
        page.rotation = Rotation(node.Get(), inherited);
        SettleResources(page, inherited);
        receiver_.AddPage(page);
        return Status::kOk;
    }

    Status Enter(PdfObject reference, PdfObject dictionary, const Inherited& inherited) {
        if (path_.size() >= limits::kPageTreeDepth) {
            return Status::kOk;  // too deep: the branch ends
        }
        const PdfObject kids = DictGet(dictionary, names::kKids);
        OwnedObject array(IsReference(kids) ? ResolveReference(file_, kids) : CloneObject(kids));
        if (!Is(array.Get(), ObjectType::kArray)) {
            return Fail(Status::kInvalidDataType, reference);
        }
        onPath_.insert(KeyOf(reference));
        path_.push_back({reference, std::move(array), FromNode(inherited, dictionary)});
        return Status::kOk;
    }

    const PdfFile& file_;
    PageReceiver& receiver_;
    std::vector<Node> path_;
    std::unordered_set<std::uint64_t, SeededHash> onPath_;
    std::uint32_t visited_ = 0;
};

}  // namespace

Status WalkPageTree(const PdfFile& file, PdfObject root, PageReceiver& receiver) {
    return PageTreeWalk(file, receiver).Walk(root);
}

}  // namespace zorvan
