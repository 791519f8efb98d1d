// Rows of several kinds share some files. Each kind bears a mark, and a source of rows is of one
// kind.
#pragma once

#include "engine/record_description.h"
#include "engine/tovrin_file.h"

namespace larkmoor::cli {

/// Whether a row is of the record's kind; always, where the record has its file for itself.
bool BearsMark(const RecordDescription& record, const RecordBytes& row);
/// Gives a row the mark of the record's kind.
void GiveMark(const RecordDescription& record, RecordBytes& row);

}  // namespace larkmoor::cli
