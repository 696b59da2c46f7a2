#pragma once

#include <cstddef>
#include <string_view>

namespace host {
class DOMNode;
}

namespace ModPub {

/// Watches one call of `Transact`: which row is at hand and what is recorded of it, in the order in which it happens.
/// It changes neither statements nor result; it may ask to stop before a row. Rows are the elements that the request's
/// `roottag` selects, documents where a class imports documents; rows and entries are counted from 1.
class ImportObserver {
public:
    virtual ~ImportObserver() = default;

    /// The request is read: its `docid`, and its `proc` in upper case.
    virtual void RequestBegins(std::string_view docid, std::string_view proc) noexcept = 0;
    /// The rows are selected; none where the operation takes none.
    virtual void RowsSelected(std::size_t count) noexcept = 0;
    /// Row `number` is about to be imported. False stops the import before it: rows that were written one by one stay,
    /// and a request that is written in one transaction is rolled back.
    virtual bool RowBegins(std::size_t number, const host::DOMNode& row) noexcept = 0;
    /// The entries of the document at hand, in a class that checks them one by one.
    virtual void EntriesSelected(std::size_t count) noexcept = 0;
    /// As `RowBegins`.
    virtual bool EntryBegins(std::size_t number, const host::DOMNode& entry) noexcept = 0;
    /// The entry at hand is refused, and its document with it. `message` begins with what was said of entries before.
    virtual void EntryRefused(std::string_view message) noexcept = 0;
    /// An outcome stands in the result document: of the row at hand, or of the request where no row has begun. A row
    /// may have several; the first one tells whether it was written.
    virtual void OutcomeRecorded(std::string_view key, long code, std::string_view description) noexcept = 0;
    /// Everything that the request wrote is being rolled back, whatever was recorded of it.
    virtual void RequestUndone() noexcept = 0;
    /// The result is an error result.
    virtual void RequestRefused(std::string_view code, std::string_view message) noexcept = 0;
};

} // namespace ModPub
