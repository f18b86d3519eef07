// quarv-reg: looks into the hives and changes them from a shell.
#include <QFile>
#include <cstdio>

#include "platform/registry/HivePaths.h"
#include "platform/registry/Hives.h"
#include "platform/registry/Utf8.h"
#include "platform/registry/tool/Tool.h"
#include "platform/registry/tool/ToolError.h"

using namespace quarv::registry;

namespace {

constexpr const char16_t* HelpText =
    uR"(Shows and changes the settings of Quarv.

quarv-reg query  KEY [-v NAME] [-s]        lists the key, its values and the keys below it
quarv-reg query  KEY NAME                  prints the data of one value and nothing else
quarv-reg add    KEY                       makes the key
quarv-reg add    KEY -v NAME [-t TYPE] -d DATA
quarv-reg add    KEY NAME DATA             sets a value, making the key where it is missing
quarv-reg delete KEY [-v NAME] [-f]        deletes the key and all below it, or one value

KEY   begins with HKLM\ (machine-wide) or HKCU\ (yours); quote it for the shell
-v    the value's name; '' is the key's default value
-t    REG_SZ (the default), REG_EXPAND_SZ, REG_MULTI_SZ (texts divided by \0), REG_DWORD,
      REG_QWORD (decimal or 0x...), REG_BINARY, REG_NONE or a number (pairs of hex digits)
-d    the value's data
-s    with all keys below
-f    deletes without asking
--    ends the options

The exit status is 0, or 1 for an error. Where you may not write the machine-wide settings, your
changes to them are kept for you alone. The files:
)";

void PrintHelp(QTextStream& out) {
    const HivePaths paths = HivePaths::FromEnvironment();
    out << QString::fromUtf16(HelpText);
    out << "  HKCU  " << QFile::decodeName(paths.user) << '\n';
    out << "  HKLM  " << QFile::decodeName(paths.machine) << '\n';
    out << "        " << QFile::decodeName(paths.overlay) << " (yours, over it)\n";
}

QStringList Words(int argc, char** argv) {
    QStringList words;
    for (int i = 1; i < argc; ++i) {
        const QByteArrayView word(argv[i]);
        if (!word.isValidUtf8())
            throw ToolError{QStringLiteral("word %1 of the command is not UTF-8").arg(i)};
        words.append(FromUtf8(word));
    }
    return words;
}

void Run(int argc, char** argv, QTextStream& in, QTextStream& out) {
    const ToolArguments arguments = ToolArguments::Parse(Words(argc, argv));
    if (arguments.command == ToolArguments::Command::Help) {
        PrintHelp(out);
    } else if (arguments.command == ToolArguments::Command::Version) {
        out << "quarv-reg " QUARV_VERSION "\n";
    } else {
        Hives hives(HivePaths::FromEnvironment(), [](const QString& line) {
            std::fprintf(stderr, "quarv-reg: %s\n", line.toUtf8().constData());
        });
        Tool(hives, in, out).Run(arguments);
    }
    out.flush();
    if (out.status() != QTextStream::Ok || std::fflush(stdout) != 0)
        throw ToolError{QStringLiteral("the output could not be written")};
}

}  // namespace

int main(int argc, char** argv) {
    QTextStream in(stdin);
    QTextStream out(stdout);
    try {
        Run(argc, argv, in, out);
        return 0;
    } catch (const ToolError& error) {
        out.flush();
        std::fprintf(stderr, "quarv-reg: %s\n", error.text.toUtf8().constData());
        return 1;
    }
}
