#pragma once

#include "tests/support/ado/AdodbRecordset.h"

namespace test {

/// A column of a recordset, and its value in the current row.
class AdodbField final : public server::Automation<AdodbField> {
public:
    AdodbField(server::ComPtr<AdodbRecordset> recordset, std::size_t index)
        : recordset_(std::move(recordset)), index_(index) {}

    server::VariantHolder Name(const server::Arguments&);
    server::VariantHolder Type(const server::Arguments&);
    server::VariantHolder DefinedSize(const server::Arguments&);
    server::VariantHolder Precision(const server::Arguments&);
    server::VariantHolder NumericScale(const server::Arguments&);
    server::VariantHolder Attributes(const server::Arguments&);
    /// Of the VARIANT type that ADO gives a column of this type.
    server::VariantHolder Value(const server::Arguments&);

    static constexpr server::Method<AdodbField> methods[] = {
        {L"Name", 0, 0, &AdodbField::Name},
        {L"Type", 0, 0, &AdodbField::Type},
        {L"DefinedSize", 0, 0, &AdodbField::DefinedSize},
        {L"Precision", 0, 0, &AdodbField::Precision},
        {L"NumericScale", 0, 0, &AdodbField::NumericScale},
        {L"Attributes", 0, 0, &AdodbField::Attributes},
        {L"Value", 0, 0, &AdodbField::Value},
    };

private:
    const host::Field& field() const { return recordset_->recordset().FieldAt(index_); }

    server::ComPtr<AdodbRecordset> recordset_;
    std::size_t index_;
};

/// The columns of a recordset.
class AdodbFields final : public server::Automation<AdodbFields> {
public:
    explicit AdodbFields(server::ComPtr<AdodbRecordset> recordset) : recordset_(std::move(recordset)) {}

    /// 0 for a closed recordset.
    server::VariantHolder Count(const server::Arguments&);
    /// By name, or by position counted from 0.
    server::VariantHolder Item(const server::Arguments& arguments);

    static constexpr server::Method<AdodbFields> methods[] = {
        {L"Count", 0, 0, &AdodbFields::Count},
        {L"Item", 1, 1, &AdodbFields::Item},
    };

private:
    std::size_t IndexOf(const VARIANT& nameOrPosition) const;

    server::ComPtr<AdodbRecordset> recordset_;
};

} // namespace test
