#include "platform/registry/tool/Tool.h"

#include <QScopeGuard>

#include "platform/registry/Utf8.h"
#include "platform/registry/tool/ToolError.h"
#include "platform/registry/tool/ValueText.h"

namespace quarv::registry {

namespace {

// Raises where `code` is a failure; `what` is what the failure belongs to.
void Check(ResultCode code, const QString& what) {
    if (code != ERROR_SUCCESS)
        throw ToolError{QStringLiteral("%1: %2").arg(what, ResultText(code))};
}

QString ValueLine(const QString& name, quint32 type, const QByteArray& data) {
    const QString shown = name.isEmpty() ? QStringLiteral("(Default)") : OneLine(name);
    return QStringLiteral("    %1    %2    %3\n")
        .arg(shown, TypeName(type), ListedText(type, data));
}

QString ValueTitle(const ToolArguments& arguments) {
    return QStringLiteral("%1, value \"%2\"").arg(arguments.FullPath(), *arguments.name);
}

}  // namespace

void Tool::Run(const ToolArguments& arguments) {
    if (arguments.command == ToolArguments::Command::Query) Query(arguments);
    if (arguments.command == ToolArguments::Command::Add) Add(arguments);
    if (arguments.command == ToolArguments::Command::Delete) Delete(arguments);
}

void Tool::Query(const ToolArguments& arguments) {
    HKey key = NoKey;
    Check(hives_.RegOpenKeyEx(arguments.root, arguments.path.toUtf8().constData(), KEY_ALL_ACCESS,
                              &key),
          arguments.FullPath());
    const auto close = qScopeGuard([&] { hives_.RegCloseKey(key); });
    if (!arguments.name) {
        List(key, arguments.FullPath(), arguments.recursive);
        return;
    }
    const QByteArray name = arguments.name->toUtf8();
    quint32 type = REG_NONE;
    quint32 size = 0;
    Check(hives_.RegQueryValueEx(key, name.constData(), &type, nullptr, &size),
          ValueTitle(arguments));
    QByteArray data(size, '\0');
    Check(hives_.RegQueryValueEx(key, name.constData(), &type, data.data(), &size),
          ValueTitle(arguments));
    if (arguments.bare)
        out_ << DataText(type, data) << '\n';
    else
        out_ << arguments.FullPath() << '\n' << ValueLine(*arguments.name, type, data);
}

void Tool::List(HKey key, const QString& path, bool recursive) {
    out_ << path << '\n';
    ListValues(key);
    ListSubKeys(key, path, recursive);
}

void Tool::ListValues(HKey key) {
    KeyInfo info;
    Check(hives_.RegQueryInfoKey(key, &info), QStringLiteral("listing the values"));
    QByteArray name(info.maxValueName + 1, '\0');
    QByteArray data(info.maxData, '\0');
    for (quint32 index = 0; index < info.values; ++index) {
        auto nameSize = static_cast<quint32>(name.size());
        auto size = static_cast<quint32>(data.size());
        quint32 type = REG_NONE;
        const ResultCode code =
            hives_.RegEnumValue(key, index, name.data(), &nameSize, &type, data.data(), &size);
        if (code == ERROR_NO_MORE_ITEMS) return;  // another program deleted some
        Check(code, QStringLiteral("listing the values"));
        out_ << ValueLine(FromUtf8(QByteArrayView(name).first(nameSize)), type, data.first(size));
    }
}

void Tool::ListSubKeys(HKey key, const QString& path, bool recursive) {
    for (quint32 index = 0;; ++index) {
        char name[MaxKeyName * 3 + 1];
        quint32 size = sizeof name;
        const ResultCode code = hives_.RegEnumKeyEx(key, index, name, &size);
        if (code == ERROR_NO_MORE_ITEMS) return;
        Check(code, path);
        const QString childPath = path + u'\\' + OneLine(FromUtf8(QByteArrayView(name, size)));
        if (!recursive) {
            out_ << childPath << '\n';
            continue;
        }
        HKey child = NoKey;
        Check(hives_.RegOpenKeyEx(key, name, KEY_ALL_ACCESS, &child), childPath);
        const auto close = qScopeGuard([&] { hives_.RegCloseKey(child); });
        out_ << '\n';
        List(child, childPath, recursive);
    }
}

void Tool::Add(const ToolArguments& arguments) {
    const quint32 type = arguments.type ? TypeOfName(*arguments.type) : quint32{REG_SZ};
    const QByteArray data =
        arguments.data ? DataOfText(type, *arguments.data) : QByteArray();  // checked before all
    HKey key = NoKey;
    Check(hives_.RegCreateKeyEx(arguments.root, arguments.path.toUtf8().constData(),
                                REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, &key),
          arguments.FullPath());
    const auto close = qScopeGuard([&] { hives_.RegCloseKey(key); });
    if (!arguments.data) return;
    const QString name = arguments.name.value_or(QString());
    Check(hives_.RegSetValueEx(key, name.toUtf8().constData(), type, data.constData(),
                               static_cast<quint32>(data.size())),
          QStringLiteral("%1, value \"%2\"").arg(arguments.FullPath(), name));
}

void Tool::Delete(const ToolArguments& arguments) {
    const QByteArray path = arguments.path.toUtf8();
    if (!arguments.name && path.isEmpty())
        throw ToolError{QStringLiteral("%1 itself cannot be deleted").arg(arguments.rootName)};
    HKey key = NoKey;
    Check(hives_.RegOpenKeyEx(arguments.root, path.constData(), KEY_SET_VALUE | KEY_QUERY_VALUE,
                              &key),
          arguments.FullPath());
    const auto close = qScopeGuard([&] { hives_.RegCloseKey(key); });
    if (!arguments.name) {
        if (!arguments.force)
            Confirm(QStringLiteral("the key %1 and all below it").arg(arguments.FullPath()));
        Check(hives_.RegDeleteTree(arguments.root, path.constData()), arguments.FullPath());
        return;
    }
    const QByteArray name = arguments.name->toUtf8();
    Check(hives_.RegQueryValueEx(key, name.constData(), nullptr, nullptr, nullptr),
          ValueTitle(arguments));
    if (!arguments.force) Confirm(ValueTitle(arguments));
    Check(hives_.RegDeleteValue(key, name.constData()), ValueTitle(arguments));
}

void Tool::Confirm(const QString& what) {
    out_ << QStringLiteral("Delete %1? [y/N] ").arg(what) << Qt::flush;
    const QString answer = in_.readLine().trimmed().toLower();
    if (answer != u"y" && answer != u"yes")
        throw ToolError{QStringLiteral("nothing was deleted (-f deletes without asking)")};
}

}  // namespace quarv::registry
