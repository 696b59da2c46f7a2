#include "tests/refhost/eai/CalendarEnvironment.h"

#include "refhost/trace/HostCall.h"

namespace {

/// What is asked as the trace shows it: marked when a component asks for itself.
std::string Marked(const std::string& text) { return (refhost::HostCall::Active() ? "host: " : "") + text; }

class CalendarConnection final : public host::Connection {
public:
    explicit CalendarConnection(std::vector<std::string>& asked) : asked_(asked) {}

    void Open(const std::string& text, const std::string& user, const std::string& password, int options) override {
        asked_.push_back(Marked("Open " + text + "|" + user + "|" + password + "|" + std::to_string(options)));
        if (text == "bad")
            throw host::Error(host::error_number::unspecified, "no such database");
    }
    void Execute(std::string_view, int) override { NotPartOfThis(); }
    void BeginTrans() override { NotPartOfThis(); }
    void CommitTrans() override { NotPartOfThis(); }
    void RollbackTrans() override { NotPartOfThis(); }

private:
    std::vector<std::string>& asked_;
};

class CalendarRecordset final : public host::Recordset {
public:
    explicit CalendarRecordset(CalendarEnvironment& environment) : environment_(environment) {}

    void SetCursorLocation(host::CursorLocation) override { NotPartOfThis(); }
    host::CursorLocation GetCursorLocation() const override { return host::CursorLocation::server; }
    void Open(std::string_view source, host::Connection&, host::CursorType, host::LockType, int) override {
        environment_.asked.push_back(Marked(std::string(source)));
        open_ = true;
    }
    void Close() override { open_ = false; }
    bool IsOpen() const override { return open_; }
    bool AtEOF() const override { return !environment_.period; }
    bool AtBOF() const override { return !environment_.period; }
    std::int64_t RecordCount() const override { return environment_.period ? 1 : 0; }
    void MoveNext() override { NotPartOfThis(); }
    std::size_t FieldCount() const override { return 2; }
    const host::Field& FieldAt(std::size_t) const override { NotPartOfThis(); }
    std::size_t FieldIndex(std::string_view name) const override { return name == "dBegin" ? 0 : 1; }
    using Recordset::FieldValue;
    host::Value FieldValue(std::size_t index) const override {
        return index == 0 ? environment_.period->first : environment_.period->last;
    }
    void Save(host::DOMDocument&) const override { NotPartOfThis(); }

private:
    CalendarEnvironment& environment_;
    bool open_ = false;
};

} // namespace

std::unique_ptr<host::Connection> CalendarEnvironment::CreateConnection() {
    return std::make_unique<CalendarConnection>(asked);
}

std::unique_ptr<host::Recordset> CalendarEnvironment::CreateRecordset() {
    return std::make_unique<CalendarRecordset>(*this);
}
