#pragma once

#include "import/reading/Table.h"

#include <string>
#include <string_view>

namespace importing {

/// The separator of a CSV text: of comma, semicolon and tab the one that stands most often, outside quotes, in the
/// first record that is not empty; comma where none does.
char DetectSeparator(std::string_view text) noexcept;

/// Records of comma-separated values as RFC 4180 has them, with any separator: a field in double quotes may hold
/// separators, line breaks and doubled quotes. A line ends with CR LF, LF or CR.
class CsvTable : public Table {
public:
    /// @param text the whole text in UTF-8, without a byte order mark
    CsvTable(std::string text, char separator);

    /// Throws UnreadableFile for a quoted field without an end, naming the line that it begins in.
    bool Next(Line& line) override;
    void Rewind() override;
    const std::vector<MergedCells>& Merged() const override;

private:
    /// Reads one field and the separator or line end behind it; whether the record goes on.
    bool ReadField(std::string& field);
    void ReadQuoted(std::string& field);
    void SkipLineEnd();

    std::string text_;
    char separator_;
    std::size_t position_ = 0;
    std::size_t line_ = 1;
};

} // namespace importing
