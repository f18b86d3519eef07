// QueryWindow: a query window over a scripted database.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>

#include "base/Hooks.h"
#include "db/SQLServerConnection.h"
#include "platform/ado/MemoryConnection.h"
#include "query/QueryControls.h"

namespace quarv::test {

class QueryWindow : public testing::Test, protected QueryControls {
  protected:
    explicit QueryWindow(std::shared_ptr<ado::MemoryScript> queries = NewScript())
        : QueryControls(queries->Factory()), script(std::move(queries)) {
        db->InitOpen(QStringLiteral(
            "Provider=sqloledb;Data Source=srv;Initial Catalog=Sales;Integrated Security=SSPI;"));
    }

    void Open(const QString& text) {
        window.DoModeless(db, text);
        QApplication::setActiveWindow(&window);
    }

    static std::shared_ptr<ado::MemoryScript> NewScript() {
        return std::make_shared<ado::MemoryScript>();
    }

    std::shared_ptr<ado::MemoryScript> script;
    // The lent connection is scripted apart, so that what a query asks is not mixed with it.
    std::shared_ptr<ado::MemoryScript> lentScript = NewScript();
    std::shared_ptr<SQLServerConnection> db =
        std::make_shared<SQLServerConnection>(lentScript->Factory());
    BoxWatcher boxes;
};

}  // namespace quarv::test
