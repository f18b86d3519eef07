#include "localdb/server/LoginReply.h"

#include <algorithm>

#include "localdb/server/ServerMessages.h"
#include "localdb/tds/Done.h"
#include "localdb/tds/EnvChange.h"
#include "localdb/tds/LoginAck.h"
#include "localdb/tds/TypeInfo.h"

namespace quarv::localdb::server {

namespace {

constexpr auto ProgramName = "Microsoft SQL Server";
constexpr auto Language = "us_english";

QByteArray CollationBytes() {
    return QByteArray(reinterpret_cast<const char*>(tds::DefaultCollation.data()),
                      static_cast<qsizetype>(tds::DefaultCollation.size()));
}

}  // namespace

void WritePreloginReply(tds::PacketWriter& writer, const tds::ProgramVersion& version) {
    tds::Prelogin reply;
    reply.version = version;
    reply.encryption = tds::Encryption::NotSupported;
    reply.Encode(writer);
    writer.EndMessage();
}

uint16_t PacketSizeFor(uint32_t wish) {
    if (wish == 0) return tds::PacketHeader::DefaultPacket;
    return static_cast<uint16_t>(std::clamp<uint32_t>(wish, tds::PacketHeader::SmallestPacket,
                                                      tds::PacketHeader::LargestPacket));
}

void WriteLoginRefusal(tds::PacketWriter& writer, std::span<const tds::ServerMessage> messages,
                       tds::Dialect dialect) {
    for (const tds::ServerMessage& message : messages) message.Encode(writer, dialect);
    tds::Done done;
    done.status = tds::Done::Error;
    done.Encode(writer, dialect);
    writer.EndMessage();
}

void WriteLoginReply(tds::PacketWriter& writer, const Settings& settings, const QString& database,
                     uint32_t tdsVersion, uint16_t packetSize) {
    using tds::EnvChange;
    const auto dialect = tds::NearestDialect(tdsVersion);
    const QString language = QString::fromLatin1(Language);
    EnvChange::OfText(EnvChange::Kind::Database, database, QStringLiteral("master")).Encode(writer);
    MakeMessage(message::DatabaseChanged, {database}, settings.serverName).Encode(writer, dialect);
    EnvChange::OfBytes(EnvChange::Kind::SqlCollation, CollationBytes(), {}).Encode(writer);
    EnvChange::OfText(EnvChange::Kind::Language, language, {}).Encode(writer);
    MakeMessage(message::LanguageChanged, {language}, settings.serverName).Encode(writer, dialect);
    tds::LoginAck ack;
    ack.tdsVersion = tds::AckVersionOf(tdsVersion);
    ack.program = QString::fromLatin1(ProgramName);
    ack.version = settings.version;
    ack.Encode(writer);
    EnvChange::OfText(EnvChange::Kind::PacketSize, QString::number(packetSize),
                      QString::number(tds::PacketHeader::DefaultPacket))
        .Encode(writer);
    tds::Done{}.Encode(writer, dialect);
    writer.EndMessage();
    writer.SetPacketSize(packetSize);
}

QString ObjectionTo(const tds::Login7& login, const Settings& settings,
                    tds::ServerMessage& message) {
    const auto refuse = [&](int number, const QStringList& inserts, const char* why) {
        message = MakeMessage(number, inserts, settings.serverName);
        return QString::fromLatin1(why);
    };
    if (!tds::DialectOf(login.tdsVersion)) {
        return refuse(
            message::NotSupported,
            {QStringLiteral("TDS version 0x%1").arg(login.tdsVersion, 8, 16, QChar(u'0'))},
            "its version of the protocol is not served");
    }
    if (login.Integrated() || !login.sspi.isEmpty()) {
        return refuse(message::UntrustedLogin, {}, "integrated logins are not served");
    }
    if (!login.attachFile.isEmpty()) {
        return refuse(message::NotSupported, {QStringLiteral("AttachDBFilename")},
                      "it wants a file attached");
    }
    if (!login.newPassword.isEmpty()) {
        return refuse(message::NotSupported, {QStringLiteral("change of password at login")},
                      "it wants its password changed");
    }
    return {};
}

}  // namespace quarv::localdb::server
