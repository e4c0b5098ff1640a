// replay_fuzz TARGET FILE-OR-FOLDER...: runs the target once over each file, in the order of their
// names, and says which. Ends with 1 when there is no such target or no file, and by a signal where
// a target finds something.
#include "fuzz/fuzz_target.h"
#include "fuzz/fuzz_world.h"

#include <QApplication>
#include <QDir>

#include <cstdio>
#include <cstring>
#include <vector>

static const fuzz::Target* targetNamed(const char* name)
{
    for (const fuzz::Target* each = fuzz::targets(); each; each = each->next) {
        if (std::strcmp(each->name, name) == 0)
            return each;
    }
    return nullptr;
}

static QStringList filesOf(const QString& path)
{
    if (!QFileInfo(path).isDir())
        return QStringList(path);
    QStringList files;
    for (const QString& name : filesIn(path))
        files << path + QLatin1Char('/') + name;
    return files;
}

// Without a byte behind the last one, as QByteArray has it, so that a sanitizer sees it read.
static bool replay(const fuzz::Target& target, const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray all = file.readAll();
    std::printf("%s %s, %d bytes\n", target.name, qPrintable(path), all.size());
    std::fflush(stdout);
    const std::vector<char> bytes(all.constData(), all.constData() + all.size());
    target.run(fuzz::Input {bytes.data(), int(bytes.size())});
    return true;
}

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const fuzz::Target* const target = argc > 1 ? targetNamed(argv[1]) : nullptr;
    if (!target) {
        std::fputs("usage: replay_fuzz TARGET FILE-OR-FOLDER..., of these targets:\n", stderr);
        for (const fuzz::Target* each = fuzz::targets(); each; each = each->next)
            std::fprintf(stderr, "  %s\n", each->name);
        return 1;
    }
    int count = 0;
    for (int i = 2; i < argc; ++i) {
        for (const QString& path : filesOf(QFile::decodeName(argv[i])))
            count += replay(*target, path) ? 1 : 0;
    }
    fuzz::endWorld();
    std::printf("%s: %d files\n", target->name, count);
    return count > 0 ? 0 : 1;
}
