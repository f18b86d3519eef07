// OdbcRecordset: one result of a command as the system reads it. The current row is fetched when
// something about it is asked; its command, and with it the connection, lives as long as it does.
#pragma once

#include <vector>

#include "platform/ado/Recordset.h"
#include "platform/ado/odbc/OdbcCommand.h"

namespace quarv::ado::odbc {

class OdbcRecordset : public Recordset, private ado::Fields {
  public:
    // Shows the command's current result; closed where it has no rows. Without a command: closed,
    // and without further results.
    explicit OdbcRecordset(std::shared_ptr<OdbcCommand> command);
    ~OdbcRecordset() override;

    ObjectState State() const override;
    bool EOF() const override;
    void MoveNext() override;
    const ado::Fields& Fields() const override { return *this; }
    void WriteRow(CellSink& sink) const override;
    RecordsetPtr NextRecordset() override;
    void Close() override;

  private:
    enum class Position : quint8 { BeforeRow, OnRow, AtEnd };

    class OdbcField : public Field {
      public:
        OdbcField(const OdbcRecordset& owner, const Column& column, std::size_t index)
            : owner_(owner), column_(column), index_(index) {}
        QString Name() const override { return column_.name; }
        quarv::Value Value() const override;

      private:
        bool IsLast(const Cell& cell) const;

        const OdbcRecordset& owner_;
        Column column_;
        std::size_t index_;
        // A short text stays, for the next row often has the same: a type, a schema, a state. Null
        // where none was read.
        mutable QString last_;
    };

    int Count() const override;
    const Field& operator[](int index) const override;
    const Field& operator[](const QString& name) const override;
    void RequireOpen() const;
    void RequireRow() const;
    void FetchIfNeeded() const;

    std::shared_ptr<OdbcCommand> command_;  // empty once handed on or given up
    std::vector<OdbcField> fields_;
    mutable Position position_ = Position::BeforeRow;
    bool open_ = false;
    bool handedOn_ = false;
};

}  // namespace quarv::ado::odbc
