#pragma once

#include <SQLiteCpp/Statement.h>

#include <string>

class PatientDetailRecord;

// The mapping between a patients row and a PatientDetailRecord.
namespace PatientRow {

// "SELECT <every field>, organizations.org_id FROM patients p JOIN organizations o ..."
// followed by the caller's WHERE.
const std::string& Select();
void Read(SQLite::Statement& q, PatientDetailRecord& record);

// The editable fields, as "col = ?, col = ?..." and in bind order.
const std::string& Assignments();
const std::string& Columns();      // "col, col, ..." in the same order
const std::string& Placeholders(); // "?, ?, ..." as many
// Binds the editable fields starting at index `first`; returns the next free index.
int Bind(SQLite::Statement& st, const PatientDetailRecord& record, int first);

// 0 when every field fits the archive, otherwise an ArchiveResult code.
int Validate(const PatientDetailRecord& record);

std::string DateOfDeathText(const PatientDetailRecord& record);

} // namespace PatientRow
