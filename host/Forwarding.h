#pragma once

#include "host/Database.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace host {

/// A connection that hands everything to another: what decorators of a connection are made of. Several may share one.
class ForwardingConnection : public Connection {
public:
    explicit ForwardingConnection(std::shared_ptr<Connection> inner) : inner_(std::move(inner)) {}

    void Open(const std::string& connectionString, const std::string& userId, const std::string& password,
              int options) override {
        inner_->Open(connectionString, userId, password, options);
    }
    void Execute(std::string_view commandText, int options) override { inner_->Execute(commandText, options); }
    void BeginTrans() override { inner_->BeginTrans(); }
    void CommitTrans() override { inner_->CommitTrans(); }
    void RollbackTrans() override { inner_->RollbackTrans(); }
    void BeginSeries() override { inner_->BeginSeries(); }
    void EndSeries() override { inner_->EndSeries(); }

    /// The connection that this one decorates.
    Connection& inner() const noexcept { return *inner_; }
    Connection* Decorated() noexcept override { return inner_.get(); }

private:
    std::shared_ptr<Connection> inner_;
};

/// A recordset that hands everything to another, and tells of each member before it runs.
class ForwardingRecordset : public Recordset {
public:
    explicit ForwardingRecordset(std::unique_ptr<Recordset> inner) : inner_(std::move(inner)) {}

    void SetCursorLocation(CursorLocation location) override { Asked("SetCursorLocation").SetCursorLocation(location); }
    CursorLocation GetCursorLocation() const override { return Asked("GetCursorLocation").GetCursorLocation(); }
    void Open(std::string_view source, Connection& connection, CursorType cursorType, LockType lockType,
              int options) override {
        Asked("Open").Open(source, connection, cursorType, lockType, options);
    }
    void Close() override { Asked("Close").Close(); }
    bool IsOpen() const override { return Asked("IsOpen").IsOpen(); }
    bool AtEOF() const override { return Asked("AtEOF").AtEOF(); }
    bool AtBOF() const override { return Asked("AtBOF").AtBOF(); }
    std::int64_t RecordCount() const override { return Asked("RecordCount").RecordCount(); }
    void MoveNext() override { Asked("MoveNext").MoveNext(); }
    std::size_t FieldCount() const override { return Asked("FieldCount").FieldCount(); }
    const Field& FieldAt(std::size_t index) const override { return Asked("FieldAt").FieldAt(index); }
    std::size_t FieldIndex(std::string_view name) const override { return Asked("FieldIndex").FieldIndex(name); }
    using Recordset::FieldValue;
    Value FieldValue(std::size_t index) const override { return Asked("FieldValue").FieldValue(index); }
    void Save(DOMDocument& document) const override { Asked("Save").Save(document); }

    /// The recordset that this one decorates.
    Recordset& inner() const noexcept { return *inner_; }

private:
    /// Called with a member's name before it is asked of the inner recordset; may throw in its stead.
    virtual void Before(std::string_view member) const { static_cast<void>(member); }

    Recordset& Asked(std::string_view member) const {
        Before(member);
        return *inner_;
    }

    std::unique_ptr<Recordset> inner_;
};

/// The connection behind every decorator of `connection`, or itself: what an implementation of `Recordset` and of the
/// components works on, however many decorators lie between.
inline Connection& Undecorated(Connection& connection) {
    Connection* innermost = &connection;
    while (Connection* const inner = innermost->Decorated()) {
        innermost = inner;
    }
    return *innermost;
}

/// The recordset behind every decorator of `recordset`, or itself.
inline Recordset& Undecorated(Recordset& recordset) {
    Recordset* innermost = &recordset;
    while (const auto* decorator = dynamic_cast<const ForwardingRecordset*>(innermost)) {
        innermost = &decorator->inner();
    }
    return *innermost;
}

} // namespace host
