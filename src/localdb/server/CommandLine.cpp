#include "localdb/server/CommandLine.h"

#include <QDir>
#include <QHash>
#include <array>
#include <cstdio>
#include <new>

#include "localdb/server/InstanceCommands.h"
#include "localdb/server/ServeCommand.h"
#include "localdb/server/ServerError.h"

namespace quarv::localdb::server {

namespace {

constexpr auto Help =
    "quarv-localdb: a small SQL server for one person\n"
    "\n"
    "  quarv-localdb start NAME     start the instance NAME, where it is not running\n"
    "  quarv-localdb stop NAME      stop it\n"
    "  quarv-localdb info [NAME]    tell about it, or about all\n"
    "  quarv-localdb delete NAME    delete it with its databases\n"
    "  quarv-localdb serve --data DIR --listen ADDRESS:PORT --login NAME --password-file FILE\n"
    "                               serve in the foreground; port 0 takes a free one\n"
    "      --sample                 make the sample database where it is missing\n"
    "  quarv-localdb --help | --version\n"
    "\n"
    "An instance listens on the loopback address only and ends after ten idle minutes.\n"
    "Exit status: 0 done, 1 failed, 2 wrong command line.\n";

void Print(const QString& text) {
    std::fputs(text.toUtf8().constData(), stdout);
    std::fflush(stdout);
}

[[noreturn]] void Wrong(const QString& what) {
    throw ServerError(ServerError::Usage, what);
}

// The options of `serve`, each with a value but --sample.
QHash<QString, QString> ParseServeOptions(const QStringList& arguments) {
    static const QStringList WithValue{QStringLiteral("--data"), QStringLiteral("--listen"),
                                       QStringLiteral("--login"),
                                       QStringLiteral("--password-file")};
    QHash<QString, QString> options;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& name = arguments[i];
        if (options.contains(name)) Wrong(QStringLiteral("%1 is given twice").arg(name));
        if (name == QStringLiteral("--sample")) {
            options.insert(name, {});
        } else if (!WithValue.contains(name)) {
            Wrong(QStringLiteral("unknown option \"%1\"").arg(name));
        } else if (i + 1 == arguments.size()) {
            Wrong(QStringLiteral("%1 needs a value").arg(name));
        } else {
            options.insert(name, arguments[++i]);
        }
    }
    for (const QString& name : WithValue) {
        if (options.value(name).isEmpty()) Wrong(QStringLiteral("serve needs %1").arg(name));
    }
    return options;
}

void RunServe(const QStringList& arguments, const EngineAccess& engine) {
    const auto options = ParseServeOptions(arguments);
    ServeJob job;
    job.dataDirectory = QDir(options[QStringLiteral("--data")]).absolutePath();
    job.listen = ListenAddress::Parse(options[QStringLiteral("--listen")]);
    job.account = Account(options[QStringLiteral("--login")],
                          ReadPasswordFile(options[QStringLiteral("--password-file")]));
    job.sample = options.contains(QStringLiteral("--sample"));
    Log log;
    Serve(
        job, engine, log,
        [](const ListenAddress& where) {
            Print(QStringLiteral("listening on %1\n").arg(where.ToText()));
        },
        [] {});
}

QString OneName(const QStringList& arguments) {
    if (arguments.size() != 1) Wrong(QStringLiteral("one instance name is needed"));
    return arguments.first();
}

void RunInfo(const QStringList& arguments, const EngineAccess&) {
    Print(DescribeInstances(arguments.isEmpty() ? QString() : OneName(arguments)));
}

struct Verb {
    const char* name;
    void (*run)(const QStringList& arguments, const EngineAccess& engine);
};

constexpr std::array<Verb, 7> Verbs{{
    {"serve", RunServe},
    {"start", [](const QStringList& a, const EngineAccess& e) { StartInstance(OneName(a), e); }},
    {"stop", [](const QStringList& a, const EngineAccess&) { StopInstance(OneName(a)); }},
    {"info", RunInfo},
    {"delete", [](const QStringList& a, const EngineAccess&) { DeleteInstance(OneName(a)); }},
    {"--help", [](const QStringList&, const EngineAccess&) { Print(QString::fromLatin1(Help)); }},
    {"--version",
     [](const QStringList&, const EngineAccess&) {
         Print(QStringLiteral("quarv-localdb %1\n").arg(QStringLiteral(QUARV_VERSION)));
     }},
}};

void RunVerb(const QStringList& arguments, const EngineAccess& engine) {
    if (arguments.isEmpty()) Wrong(QStringLiteral("nothing to do"));
    for (const Verb& verb : Verbs) {
        if (arguments.first() != QLatin1String(verb.name)) continue;
        verb.run(arguments.mid(1), engine);
        return;
    }
    const bool isOption = arguments.first().startsWith(u'-');
    Wrong(
        (isOption ? QStringLiteral("unknown option \"%1\"") : QStringLiteral("unknown verb \"%1\""))
            .arg(arguments.first()));
}

int Fail(const QString& text, int status) {
    std::fprintf(stderr, "quarv-localdb: %s\n", text.toUtf8().constData());
    return status;
}

}  // namespace

int RunCommandLine(const QStringList& arguments, const EngineAccess& engine) {
    try {
        RunVerb(arguments, engine);
        return 0;
    } catch (const ServerError& error) {
        return Fail(error.Description(), error.ExitStatus());
    } catch (const Error& error) {
        return Fail(error.Description(), 1);
    } catch (const std::bad_alloc&) {
        return Fail(QStringLiteral("out of memory"), 1);
    }
}

}  // namespace quarv::localdb::server
