#pragma once

#include <pedflux/api.h>

#include <memory>
#include <string>

namespace pedflux {

namespace engine {
struct TableData;
}

/// Labelled rows and columns of texts and numbers. Rows and columns count from 0; others throw Exception.
class PEDFLUX_API Table {
  public:
    /// Used by the library.
    explicit Table(std::shared_ptr<engine::TableData const> data);

    /// Whether the query had what it needs; a table that is not valid has no rows and no columns.
    bool IsValid();
    int GetRowCount();
    int GetColumnCount();
    std::string GetRowLabel(int row);
    std::string GetColumnLabel(int column);

    /// A whole number as it stands, another number rounded to the nearest. Throws Exception for a text and for a number
    /// that no int holds.
    int GetIntValue(int row, int column);
    /// Throws Exception for a text.
    double GetDoubleValue(int row, int column);
    /// A text as it stands, a number as the shortest text that reads back as the same number.
    std::string GetStringValue(int row, int column);

    /// Writes comma separated values (RFC 4180): a line with an empty field and the labels of the columns, then a line
    /// for each row, its label first. Throws Exception when the file cannot be written.
    void ExportCsv(std::string const& path);

  private:
    std::shared_ptr<engine::TableData const> data_;
};

}  // namespace pedflux
