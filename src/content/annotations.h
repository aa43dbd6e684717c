// The appearances of form fields: the only annotations that are printed.
#pragma once

#include <vector>

#include "api/status.h"
#include "pdf/object.h"
#include "ps/page.h"

namespace zorvan {

/// The widgets of a page dictionary that are to be printed and have an appearance; what these name is
/// registered for the registry's current page.
std::vector<Annotation> ReadAnnotations(PdfObject pageDictionary);

/// Tells what the appearances draw that it is drawn.
void MarkDrawnInAnnotations(const Page& page);
/// Writes what the appearances name.
Status EmitAnnotationResources(const Page& page);
/// Draws each appearance over the page: its box, transformed by its matrix, fills the annotation's rectangle.
Status RunAnnotations(const Page& page);

}  // namespace zorvan
