// Resource classes for tests. They write a line that says what is written, and do what their dictionary
// tells:
//
//   /Broken true           the object is no usable resource
//   /Resources << >>       further resources that this one uses
//   /UsedFunction, /UsedEncoding, /UsedCMap, /UsedHalftone   likewise, of the categories that are never named
//   /Text (DefaultRGB )    the text that stands for its use
//   /Family 16 /N 3        of a colour space
//   /op true               of a graphics state
//   /PaintType 1           of a pattern: it carries its own colour
//   /Subtype /Type3        of a font: it stays with its page
//   /Contents 9 0 R        of an XObject: run as a form's content where it is painted
#pragma once

#include "api/job.h"
#include "ps/resource.h"
#include "support/job_fixture.h"

namespace zorvan::test {

/// A factory for each category.
ResourceFactories FakeFactories();

/// A job whose resources are these.
class FakeResourceTest : public JobTest {
protected:
    void SetUp() override {
        JobTest::SetUp();
        CurrentJob()->factories = FakeFactories();
    }
};

}  // namespace zorvan::test
