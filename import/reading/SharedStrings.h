#pragma once

#include "import/reading/Archive.h"
#include "import/reading/PartReader.h"

#include <string>
#include <vector>

namespace importing {

/// The text of the string item (`si`, `is`) that has just begun, its runs joined, without the readings (`rPh`) that
/// stand beside East Asian text; reads to the item's end. "_x000D_" and the like stand for the characters that they
/// number (ECMA-376 part 1, 22.9.2.19).
void ReadStringItem(PartReader& reader, std::string& text);

/// Puts the characters in place of "_xHHHH_".
void DecodeEscapes(std::string& text);

/// The texts of the part `xl/sharedStrings.xml`, in order. Throws UnreadableFile.
std::vector<std::string> ReadSharedStrings(Archive& archive, const std::string& part);

} // namespace importing
