// ConnectionChoices: what the user has chosen in the connection dialog, apart from its controls:
// how it comes out of a connection string, what is still missing, and how it goes back into one.
#pragma once

#include <QString>
#include <optional>

namespace quarv {

class ConnectionInfo;

struct ConnectionChoices {
    struct Complaint {
        QString text;
        QString title;
    };

    QString server{};
    QString database{};
    QString user{};
    QString password{};
    bool useWinAccount = false;
    bool useSQLAccount = false;

    // Both accounts may come out chosen, or neither; the controls see to the rest.
    static ConnectionChoices From(ConnectionInfo& model);

    // What keeps a connection from being tried, or nothing.
    std::optional<Complaint> FindMissing() const;
    // What keeps the main window from being opened besides, or nothing.
    std::optional<Complaint> FindMissingDatabase() const;

    // Makes `model` address what was chosen. An account that it holds stays where the SQL account
    // is not chosen.
    void BuildInto(ConnectionInfo& model) const;
};

}  // namespace quarv
