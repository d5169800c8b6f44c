// SPDX-FileCopyrightText: 2026 The Vantelo authors
// SPDX-License-Identifier: MIT

// Whatever stands in the preference file: every preference has a legal value, a write keeps all that was there, and
// the file stays whole and the user's alone.

#include "Foundation/Deployment.h"
#include "Input.h"
#include "Preferences/AppStorage.h"
#include "Preferences/Linux/PreferenceFile.h"
#include "Require.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cmath>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// A folder in memory, so that no disk is worn.
class Home {
public:
    Home()
    {
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_folder.path()));
        require(QDir().mkpath(m_folder.filePath(u"Vantelo"_s)), "there is a folder");
        // What is told to the user each time is not read here.
        require(std::freopen("/dev/null", "w", stdout) != nullptr, "there is a place for output");
    }

    QString file() const { return m_folder.filePath(u"Vantelo/"_s + Deployment::domain() + u".conf"_s); }

    void write(const QByteArray &content)
    {
        const int descriptor = ::open(QFile::encodeName(file()).constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        require(::write(descriptor, content.constData(), static_cast<std::size_t>(content.size())) == content.size(),
            "the file is written");
        ::close(descriptor);
    }

private:
    QTemporaryDir m_folder{QFile::exists(u"/dev/shm"_s) ? u"/dev/shm/vantelo-XXXXXX"_s : QDir::tempPath()};
};

struct Values {
    QString accessToken;
    QString adAccountId;
    std::int64_t staleThresholdMinutes = 0;
    bool launchAtLogin = false;
    std::int64_t lastImpressions = 0;
    double lastChangeTimestamp = 0.0;

    friend bool operator==(const Values &, const Values &) = default;
};

/// A preference as AppStorage reads it, but without its looking at the disk each time.
template <class Value>
Value valueOf(const PreferenceFile &file, const QString &key, const Value &fallback)
{
    return preferenceAs<Value>(file.value(key)).value_or(fallback);
}

Values valuesIn(const QString &path)
{
    PreferenceFile file(path);
    require(file.sync() == PreferenceStorage::Outcome::Done, "any file can be read");
    return {
        .accessToken = valueOf(file, u"accessToken"_s, QString()),
        .adAccountId = valueOf(file, u"adAccountId"_s, QString()),
        .staleThresholdMinutes = valueOf(file, u"staleThresholdMinutes"_s, std::int64_t{15}),
        .launchAtLogin = valueOf(file, u"launchAtLogin"_s, false),
        .lastImpressions = valueOf(file, u"lastImpressions"_s, std::int64_t{0}),
        .lastChangeTimestamp = valueOf(file, u"lastChangeTimestamp"_s, 0.0),
    };
}

bool isUsersAlone(const QString &file)
{
    struct stat status {};
    return ::stat(QFile::encodeName(file).constData(), &status) != 0 || (status.st_mode & 0777U) == 0600;
}

QList<QByteArray> linesOf(QByteArray content) { return content.replace('\r', '\n').split('\n'); }

/// Comments and what cannot be read.
bool saysNothing(const QByteArray &line)
{
    const QByteArray text = line.trimmed();
    return text.startsWith(';') || (!text.isEmpty() && !text.startsWith('[') && !text.contains('='));
}

void checkWrite(Home &home, const QByteArray &content, const Values &before)
{
    Values expected = before;
    expected.lastImpressions = before.lastImpressions == 7 ? 8 : 7;
    {
        DefaultsStore store;
        AppStorage<std::int64_t>(store, u"lastImpressions"_s, 0).set(expected.lastImpressions);
    }
    require(valuesIn(home.file()) == expected, "a write keeps the other values");
    require(isUsersAlone(home.file()), "for the user alone");
    require(QDir(QFileInfo(home.file()).path()).entryList(QDir::Files).size() == 1, "and nothing is left beside it");
    QFile file(home.file());
    require(file.open(QIODevice::ReadOnly), "the file is there");
    const QList<QByteArray> kept = linesOf(file.readAll());
    const QList<QByteArray> lines = linesOf(content.startsWith("\xEF\xBB\xBF") ? content.sliced(3) : content);
    for (const QByteArray &line : lines)
        require(!saysNothing(line) || kept.contains(line), "and the lines that are none");
}

/// Any text at all, as a value.
void checkText(const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    const QByteArray stored = PreferenceFormat::stored(QString::fromUtf8(utf8));
    require(!stored.contains('\n') && !stored.contains('\r'), "a value is one line");
    require(PreferenceFormat::value(stored).toString() == QString::fromUtf8(utf8), "a text comes back as it was");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static Home home;
    const QByteArray content = Input(data, size).rest();
    home.write(content);
    const Values values = valuesIn(home.file());
    require(std::isfinite(values.lastChangeTimestamp), "a time is a time");
    checkText(Input(data, size).text());
    // One in 64, because a write takes as long as dozens of reads.
    if (qHash(content) % 64 == 0)
        checkWrite(home, content, values);
    return 0;
}
