// The door to the one current job: what the floors below may ask of it, and nothing else.
//
// There is one job in a process (threads: none), so it is reached through these accessors and not handed down
// as an argument. Leaf code (lexer, number text, codecs) takes what it needs as arguments and stays outside.
#pragma once

#include <cstdint>

namespace zorvan {

class AllocationRegistry;
class CodecSlots;
class FilterLibrary;
class NameTable;
class OutputSink;
class PdfFile;
class ResourceRegistry;

/// These four exist from KAPRINE_Begin to KAPRINE_End.
NameTable& CurrentNames();
AllocationRegistry& CurrentAllocations();
FilterLibrary& CurrentFilterLibrary();
CodecSlots& CurrentCodecSlots();

/// The open file, or null between files.
PdfFile* CurrentPdfFile();

/// These two exist only while a file is open.
OutputSink& CurrentOutput();
ResourceRegistry& CurrentRegistry();

/// The next number for a resource that has no object number of its own: 0x8FFFF for the first of a job, one
/// higher for each later one. Deliberately never reset between files, so that such names are unique in a job.
std::uint32_t TakeGeneratedResourceNumber();

}  // namespace zorvan
