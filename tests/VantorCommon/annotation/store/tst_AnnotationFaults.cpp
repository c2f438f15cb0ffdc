// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// What is saved outlives kills, full disks and folders that cannot be written, and so does the journal.
// VANTOR_KILLS chooses how many kills there are in all.
#include "KilledChild.h"
#include "StoreBench.h"

#include <VantorCommon/annotation/store/PictureExport.h>
#include <tests/support/TestMain.h>

#include <QDir>
#include <QProcess>
#include <cstdlib>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace Vantor::Annotations;

namespace
{
constexpr const char* kSaves = "--saves";
constexpr const char* kBoth = "--both";
constexpr const char* kFull = "--full";
constexpr const char* kReadOnly = "--read-only";
constexpr const char* kPicture = "picture ";
constexpr const char* kImage = "image ";

QByteArray Content(const QString& strPath)
{
    QFile file(strPath);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

/// The same numbers and ids in every process.
SDocument DocumentOf(int nObjects)
{
    SDocument document = StoreBench::Many(nObjects);
    document.pages[0].width = 200;
    document.pages[0].height = 150;
    for (int i = 0; i < nObjects; ++i) {
        SObject& object = document.pages[0].objects[static_cast<std::size_t>(i)];
        object.id =
            QStringLiteral("00000000-0000-4000-8000-%1").arg(i, 12, 10, QLatin1Char('0')).toStdString();
        object.name = "of " + std::to_string(nObjects);
        object.named = true;
        object.numbers = {i % 90 * 1.5, nObjects / 100.0, 20.25, 30.5};
    }
    return document;
}

/// Two states of one viewer to save.
struct SState {
    explicit SState(bool bSecond) : document(DocumentOf(bSecond ? 900 : 30))
    {
        bench.images.SetImages({MakeTestImage(200, 150, 3, bSecond ? 2 : 1)});
        bench.store().Apply(document);
    }
    /// @return a failure, or nothing
    std::string Save(const QString& strKind, const QString& strPath)
    {
        if (strKind.startsWith(QLatin1String(kPicture)))
            return PictureExport::Save(bench.ctrl, strPath, false).toStdString();
        if (strKind.startsWith(QLatin1String(kImage))) {
            bench.ctrl.SaveFile(strPath);
            return {};
        }
        SContext context;
        context.imageName = "a.png";
        context.width = 200;
        context.height = 150;
        return Vantor::Annotations::Save(document, strPath.toStdString(), strKind.toStdString(), context)
            .failure;
    }

    StoreBench bench;
    SDocument document;
};

/// In a child: saves two states in turn until it is killed.
int SaveOnAndOn(const QString& strKind, const QString& strPath)
{
    SState first(false), second(true);
    for (int i = 1;; ++i)
        if (!(i % 2 == 1 ? first : second).Save(strKind, strPath).empty() || !KilledChild::Tell(i))
            return 1;
}

/// In a child, for letters differ off the screen: saves the first state at a path and the second at another.
int SaveBoth(const QString& strKind, const QString& strFirst, const QString& strSecond)
{
    return SState(false).Save(strKind, strFirst).empty() && SState(true).Save(strKind, strSecond).empty() ? 0
                                                                                                          : 1;
}

int Wrong(const char* szWhat)
{
    std::fprintf(stderr, "%s\n", szWhat);
    return 1;
}

/// @return whether the store could save
bool SaveBy(StoreBench& bench, const QString& strPath)
{
    bool bSaved = false, bTold = false;
    const auto connection = QObject::connect(&bench.store(), &CAnnotationStore::signal_Saved,
                                             [&](const QString&, const SReport& r) {
                                                 bTold = true;
                                                 bSaved = r.failure.empty();
                                             });
    bench.store().Save(strPath);
    while (!bTold)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QObject::disconnect(connection);
    return bSaved;
}

/// The journal that a living process holds.
QString JournalPath()
{
    const QDir folder(AnnotationRecovery::GetFolder());
    const QStringList lstFiles = folder.entryList({QStringLiteral("*.jsonl")}, QDir::Files);
    return lstFiles.size() == 1 ? folder.filePath(lstFiles[0]) : QString();
}

bool JournalHas(const SDocument& document)
{
    SDocument back;
    const SReport report = StoreBench::ReadJournal(JournalPath(), back);
    return report.failure.empty() && report.remarks.empty() && SameDocument(back, document);
}

/// A limit of the size of files stops a write as a full disk does.
void LimitFiles(rlim_t nBytes)
{
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{nBytes, RLIM_INFINITY};
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

/// In a child: the disk gets full in the middle of a session and empty again.
int WorkOnAFullDisk(const QString& strPath)
{
    StoreBench bench(true);
    bench.store().Apply(DocumentOf(3));
    if (!SaveBy(bench, strPath))
        return Wrong("not saved at first");
    const QByteArray old = Content(strPath);
    bench.store().Apply(DocumentOf(900));
    const SDocument before = bench.store().TakeDocument();
    LimitFiles(5000);
    if (SaveBy(bench, strPath))
        return Wrong("saved on a full disk");
    if (Content(strPath) != old)
        return Wrong("the old file is gone");
    if (QDir(QFileInfo(strPath).path()).entryList(QDir::Files | QDir::Hidden).size() != 1)
        return Wrong("something is left behind");
    if (!bench.store().HasUnsaved() || !JournalHas(before))
        return Wrong("the journal is gone");
    bench.store().Rename(bench.geometry.GetAt(0), QStringLiteral("missed"));
    if (!JournalHas(before))
        return Wrong("a step without room damages the journal");
    LimitFiles(RLIM_INFINITY);
    bench.store().Rename(bench.geometry.GetAt(1), QStringLiteral("made good"));
    if (!JournalHas(bench.store().TakeDocument()))
        return Wrong("what was missed is not made good");
    if (!SaveBy(bench, strPath) || bench.store().HasUnsaved() || !JournalPath().isEmpty())
        return Wrong("not saved at last");
    SDocument back;
    Load(strPath.toStdString(), {}, {}, back);
    return SameDocument(back, bench.store().TakeDocument()) ? 0 : Wrong("something else is saved");
}

/// In a child: the file stands in a folder that cannot be written.
int WorkInAReadOnlyFolder(const QString& strPath)
{
    constexpr uid_t kNobody = 65534;
    if (::getuid() == 0 && ::setuid(kNobody) != 0) // root may write everywhere
        return Wrong("still root");
    const QByteArray old = Content(strPath);
    StoreBench bench(true);
    bench.store().Apply(DocumentOf(900));
    if (SaveBy(bench, strPath))
        return Wrong("saved in a folder that cannot be written");
    if (old.isEmpty() || Content(strPath) != old)
        return Wrong("the old file is gone");
    return bench.store().HasUnsaved() && JournalHas(bench.store().TakeDocument())
               ? 0
               : Wrong("the journal is gone");
}
} // namespace

class tst_AnnotationFaults : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_pFolder;

    QString Folder(const char* szName) const
    {
        const QString strPath = m_pFolder->filePath(QLatin1String(szName));
        QDir().mkpath(strPath);
        return strPath + QLatin1Char('/');
    }
    static int ExitCodeOf(const QStringList& lstArguments)
    {
        QProcess child;
        child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        child.start(QStringLiteral("/proc/self/exe"),
                    lstArguments + QStringList{QStringLiteral("-platform"), QStringLiteral("offscreen")});
        return child.waitForFinished(60000) ? child.exitCode() : -1;
    }

private Q_SLOTS:
    void init()
    {
        m_pFolder = std::make_unique<QTemporaryDir>();
        ::chmod(m_pFolder->path().toUtf8().constData(), 0777);
        qputenv("XDG_STATE_HOME", Folder("state").toUtf8());
        ::chmod(Folder("state").toUtf8().constData(), 0777);
    }

    void aSaveThatIsKilledLeavesTheOldFileOrTheNewOne_data()
    {
        QTest::addColumn<QString>("suffix");
        for (const SFormatInfo& format : GetFormats())
            if (format.writes)
                QTest::newRow(format.name.c_str()) << QString::fromStdString(format.suffix);
        for (const PictureExport::SFormat& format : PictureExport::GetFormats())
            QTest::newRow(qPrintable(QLatin1String(kPicture) + format.strName)) << format.lstSuffixes[0];
        for (const char* szSuffix : {"png", "jpg", "tif", "bmp", "gif"})
            QTest::newRow(qPrintable(QLatin1String(kImage) + QLatin1String(szSuffix)))
                << QString::fromLatin1(szSuffix);
    }
    void aSaveThatIsKilledLeavesTheOldFileOrTheNewOne()
    {
        QFETCH(QString, suffix);
        const int nKills = std::max(4, qEnvironmentVariableIntValue("VANTOR_KILLS") / 20);
        const QString strKind = QString::fromUtf8(QTest::currentDataTag());
        const QString strPath = Folder("killed") + QStringLiteral("a.") + suffix;
        const QString strFirst = Folder("whole") + QStringLiteral("1.") + suffix;
        const QString strSecond = Folder("whole") + QStringLiteral("2.") + suffix;
        QCOMPARE(ExitCodeOf({QLatin1String(kBoth), strKind, strFirst, strSecond}), 0);
        const QByteArray whole[] = {Content(strFirst), Content(strSecond)};
        QVERIFY(!whole[0].isEmpty() && whole[0] != whole[1]);
        std::mt19937 random(7);
        int nSaves = 0;
        for (int i = 0; i < nKills; ++i) {
            const int nDone = KilledChild::Run({kSaves, strKind.toUtf8(), strPath.toUtf8()},
                                               static_cast<int>(random() % 30000U));
            QVERIFY(nDone > 0);
            nSaves += nDone;
            const QByteArray bytes = Content(strPath);
            if (suffix == QLatin1String("pdf")) // it tells its time
                QVERIFY(bytes.startsWith("%PDF-") && bytes.trimmed().endsWith("%%EOF"));
            else
                QVERIFY(bytes == whole[0] || bytes == whole[1]);
        }
        qInfo("%d kills, %d saves", nKills, nSaves);
    }

    void aFullDiskKeepsTheOldFileAndTheJournal()
    {
        QCOMPARE(ExitCodeOf({QLatin1String(kFull), Folder("full") + QStringLiteral("a.vantor.json")}), 0);
    }

    void aFolderThatCannotBeWrittenKeepsTheOldFileAndTheJournal()
    {
        const QString strFolder = Folder("old");
        const QString strPath = strFolder + QStringLiteral("a.vantor.json");
        SContext context;
        QCOMPARE(Save(DocumentOf(3), strPath.toStdString(), kOwnFormat, context).failure, std::string());
        QCOMPARE(::chmod(strFolder.toUtf8().constData(), 0555), 0);
        const int nExit = ExitCodeOf({QLatin1String(kReadOnly), strPath});
        QCOMPARE(::chmod(strFolder.toUtf8().constData(), 0755), 0);
        QCOMPARE(nExit, 0);
    }
};

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    const auto is = [&](const char* szScript, int nArguments) {
        return argc > nArguments && qstrcmp(argv[1], szScript) == 0;
    };
    if (is(kSaves, 3))
        return SaveOnAndOn(QString::fromUtf8(argv[2]), QString::fromUtf8(argv[3]));
    // They end at once: Qt's platform without a display does not release its screen.
    if (is(kBoth, 4))
        std::_Exit(
            SaveBoth(QString::fromUtf8(argv[2]), QString::fromUtf8(argv[3]), QString::fromUtf8(argv[4])));
    if (is(kFull, 2))
        std::_Exit(WorkOnAFullDisk(QString::fromUtf8(argv[2])));
    if (is(kReadOnly, 2))
        std::_Exit(WorkInAReadOnlyFolder(QString::fromUtf8(argv[2])));
    tst_AnnotationFaults test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_AnnotationFaults.moc"
