#pragma once

// The module's string table: every text the module shows, by id (resource.h).
// LoadString(id) finds them while the module's resources are current
// (BRAVIK_MANAGE_STATE).

class StringTable;

// Adds the module's texts to table.
void AddModuleStrings(StringTable& table);

// The translation context of the module's texts (for Qt Linguist).
constexpr const char* BRAVIK_TRANSLATION_CONTEXT = "Bravik";
