// MemoryRecordset: walks the scripted results of one statement. Made by MemoryConnection only; it
// holds its own copy of the results.
#pragma once

#include <vector>

#include "platform/ado/MemoryResult.h"
#include "platform/ado/Recordset.h"

namespace quarv::ado {

class MemoryRecordset : public Recordset, private Fields {
  public:
    // The first of `results`; a closed record set where there are none. Raises where the first
    // result is an error. `connectionOpen` turns false when the connection closes.
    static RecordsetPtr First(MemoryResults results, std::shared_ptr<bool> connectionOpen);

    ObjectState State() const override;
    bool EOF() const override;
    void MoveNext() override;
    const ado::Fields& Fields() const override { return *this; }
    RecordsetPtr NextRecordset() override;
    void Close() override;

  private:
    // The results of one statement and how far they were walked; shared by its record sets.
    struct Walk {
        MemoryResults results;
        std::size_t next = 0;
        std::shared_ptr<bool> connectionOpen;
    };

    class MemoryField : public Field {
      public:
        MemoryField(const MemoryRecordset& owner, int index) : owner_(owner), index_(index) {}
        QString Name() const override;
        quarv::Value Value() const override;

      private:
        const MemoryRecordset& owner_;
        int index_;
    };

    explicit MemoryRecordset(std::shared_ptr<Walk> walk);
    static RecordsetPtr Step(const std::shared_ptr<Walk>& walk);

    int Count() const override;
    const Field& operator[](int index) const override;
    const Field& operator[](const QString& name) const override;
    void RequireOpen() const;
    void RaiseBehindLastRow() const;
    const MemoryResult& Result() const { return walk_->results[result_]; }

    std::shared_ptr<Walk> walk_;
    std::size_t result_ = 0;
    std::size_t row_ = 0;
    mutable bool errorRaised_ = false;
    bool open_ = false;
    bool handedOn_ = false;  // its results were passed to the next record set, or given up
    std::vector<MemoryField> fields_;
};

}  // namespace quarv::ado
