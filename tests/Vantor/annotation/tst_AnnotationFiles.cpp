// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "Documents.h"
#include "tests/support/EndChild.h"
#include "tests/support/TestMain.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Documents;

namespace
{
std::string PathIn(const QTemporaryDir& folder, const char* pName)
{
    return folder.filePath(QString::fromUtf8(pName)).toStdString();
}

QByteArray ContentOf(const std::string& path)
{
    QFile file(QString::fromStdString(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void SetContent(const std::string& path, const QByteArray& bytes)
{
    QFile file(QString::fromStdString(path));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

int CountIn(const QTemporaryDir& folder)
{
    return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size();
}

SDocument Small(double dX = 1.5)
{
    SDocument document = MakeDocument({Make("point", {dX, 2.5})});
    document.pages[0].objects[0].id = "0f8fad5b-d9cb-469f-a165-70867728950e";
    return document;
}

std::string SaveOwn(const SDocument& document, const std::string& path)
{
    return Save(document, path, kOwnFormat, SContext()).failure;
}

/// Runs the function in a process of its own, where limits and rights can be changed; what it returns.
template <class TFunction> int InChild(TFunction function)
{
    const pid_t nChild = ::fork();
    if (nChild == 0)
        EndChild(function());
    int nStatus = 0;
    ::waitpid(nChild, &nStatus, 0);
    return WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1;
}
} // namespace

/// Loading and saving of files of annotations, whatever the format.
class tst_AnnotationFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTableTellsEveryFormat();
    void aSidecarIsSavedAndLoadedAndKnownByItsContent();
    void whatIsNoFileOfAnnotationsIsNotLoaded();
    void anUnknownFormatIsRefused();
    void aFileOfALaterVersionIsNotOverwritten();
    void aDamagedFileIsNamedAndNotOverwritten();
    void filesOfOtherKindsMayBeOverwrittenUnlessTheyAreSidecars();
    void aFullDiskKeepsTheOldFile();
    void aReadOnlyFolderIsTold();
    void afterAKillTheFileIsOldOrNew();
    void namesOfClassesStandInAFileBesideTheOther();
    void onlyTheKnownFileIsReplacedWhereOneIsKnown();
    void anIdentityIsNameSizeAndDigest();
    void aFileIsAnotherWhenItsBytesAre();
};

void tst_AnnotationFiles::theTableTellsEveryFormat()
{
    const std::vector<SFormatInfo> formats = GetFormats();
    QVERIFY(!formats.empty());
    QCOMPARE(formats[0].name, std::string(kOwnFormat));
    QCOMPARE(formats[0].suffix, std::string("vantor.json"));
    for (const SFormatInfo& format : formats) {
        QVERIFY2(format.reads || format.writes, format.name.c_str());
        SContext context;
        context.width = 400;
        context.height = 300;
        context.imageName = "photo.jpg";
        std::string bytes;
        const SReport report =
            Write(MakeDocument({Make("rectangle", {10, 20, 30, 40})}), format.name, context, bytes);
        QCOMPARE(report.failure.empty(), format.writes);
        if (format.reads && format.writes) { // and it knows its own
            QCOMPARE(FormatOf(bytes, "photo." + format.suffix), format.name);
            SDocument read;
            QCOMPARE(Read(bytes, format.name, context, read).failure, std::string());
            QCOMPARE(read.pages.size(), std::size_t(1));
            QCOMPARE(read.pages[0].objects.size(), std::size_t(1));
            const Numbers& numbers = read.pages[0].objects[0].numbers;
            QCOMPARE(numbers.size(), std::size_t(4));
            for (std::size_t i = 0; i < 4; ++i) // some round
                QVERIFY(std::abs(numbers[i] - 10.0 * (1.0 + static_cast<double>(i))) < 1e-6);
        }
    }
}

void tst_AnnotationFiles::aSidecarIsSavedAndLoadedAndKnownByItsContent()
{
    const QTemporaryDir folder;
    const std::string path = SidecarOf(PathIn(folder, "Bild \xc3\xa4.jpg"));
    QCOMPARE(path, PathIn(folder, "Bild \xc3\xa4.jpg.vantor.json"));
    QCOMPARE(SaveOwn(Small(), path), std::string());
    QCOMPARE(SaveOwn(Small(7.0), path), std::string()); // over it
    QCOMPARE(CountIn(folder), 1);
    for (const char* pFormat : {"", kOwnFormat}) {
        SDocument document;
        QCOMPARE(Load(path, pFormat, SContext(), document).failure, std::string());
        QCOMPARE(Difference(document, Small(7.0)), QString());
    }
}

void tst_AnnotationFiles::whatIsNoFileOfAnnotationsIsNotLoaded()
{
    const QTemporaryDir folder;
    const std::string path = PathIn(folder, "a.txt.doc");
    SetContent(path, "hello");
    SDocument document = Small();
    const auto failureOf = [&](const std::string& file) {
        return Load(file, "", SContext(), document).failure;
    };
    QCOMPARE(failureOf(path), std::string("It is not a file of annotations."));
    QCOMPARE(failureOf(path + "x"), std::string("There is no such file."));
    QCOMPARE(failureOf(folder.path().toStdString()), std::string("It is not a regular file."));
    QCOMPARE(failureOf(std::string()), std::string("There is no such file."));
    QFile huge(QString::fromStdString(path));
    QVERIFY(huge.resize((64 << 20) + 1));
    QCOMPARE(failureOf(path), std::string("The file is larger than 64 MiB."));
    QCOMPARE(Difference(document, Small()), QString());
}

void tst_AnnotationFiles::anUnknownFormatIsRefused()
{
    SContext context;
    std::string bytes = "kept";
    SDocument document = Small();
    QVERIFY(!Write(document, "Nonesuch", context, bytes).failure.empty());
    QCOMPARE(bytes, std::string("kept"));
    QVERIFY(!Read("{}", "Nonesuch", context, document).failure.empty());
    QCOMPARE(Difference(document, Small()), QString());
    const QTemporaryDir folder;
    QVERIFY(!Save(document, PathIn(folder, "a"), "Nonesuch", context).failure.empty());
    QCOMPARE(CountIn(folder), 0);
}

void tst_AnnotationFiles::aFileOfALaterVersionIsNotOverwritten()
{
    const QTemporaryDir folder;
    const std::string path = PathIn(folder, "a.png.vantor.json");
    const QByteArray later = R"({"format":"vantor-annotations","version":2,"readable_by":2,"pages":[]})";
    SetContent(path, later);
    QCOMPARE(SaveOwn(Small(), path),
             std::string("\"a.png.vantor.json\" is there already and is not overwritten. "
                         "It was saved by a later version."));
    QCOMPARE(ContentOf(path), later);
    SDocument document;
    const SReport report = Load(path, "", SContext(), document);
    QCOMPARE(report.failure, std::string());
    QCOMPARE(report.digest, std::string()); // so that nobody takes it for one that may be replaced
    QVERIFY(document.IsReadOnly());
    QVERIFY(!SaveOwn(document, PathIn(folder, "b.vantor.json")).empty());
    QCOMPARE(CountIn(folder), 1);
}

void tst_AnnotationFiles::aDamagedFileIsNamedAndNotOverwritten()
{
    const QTemporaryDir folder;
    const std::string path = PathIn(folder, "a.png.vantor.json");
    for (const QByteArray& damaged : {QByteArray(), QByteArray("{\"format\":\"vantor-annotations\",")}) {
        SetContent(path, damaged);
        const std::string failure = SaveOwn(Small(), path);
        QVERIFY2(
            failure.find("\"a.png.vantor.json\" is there already and is not overwritten. It is damaged") == 0,
            failure.c_str());
        QCOMPARE(ContentOf(path), damaged);
        SDocument document;
        QVERIFY(!Load(path, kOwnFormat, SContext(), document).failure.empty());
    }
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("folder.vantor.json")));
    QVERIFY(!SaveOwn(Small(), PathIn(folder, "folder.vantor.json")).empty());
}

void tst_AnnotationFiles::filesOfOtherKindsMayBeOverwrittenUnlessTheyAreSidecars()
{
    const QTemporaryDir folder;
    const QByteArray later = R"({"format":"vantor-annotations","version":2,"readable_by":2,"pages":[]})";
    for (const SFormatInfo& format : GetFormats()) {
        if (!format.writes || format.name == kOwnFormat)
            continue;
        SContext context;
        context.width = 400;
        context.height = 300;
        const SDocument document = MakeDocument({Make("rectangle", {10, 20, 30, 40})});
        const std::string path = PathIn(folder, "a.bin");
        SetContent(path, "something");
        QCOMPARE(Save(document, path, format.name, context).failure, std::string());
        QVERIFY(ContentOf(path) != "something");
        SetContent(path, later);
        QVERIFY(!Save(document, path, format.name, context).failure.empty());
        QCOMPARE(ContentOf(path), later);
    }
    SetContent(PathIn(folder, "a.bin"), "something"); // which may be anything
    QVERIFY(!SaveOwn(Small(), PathIn(folder, "a.bin")).empty());
    QCOMPARE(ContentOf(PathIn(folder, "a.bin")), QByteArray("something"));
}

void tst_AnnotationFiles::aFullDiskKeepsTheOldFile()
{
    const QTemporaryDir folder;
    const std::string path = PathIn(folder, "a.vantor.json");
    QCOMPARE(SaveOwn(Small(), path), std::string());
    const QByteArray before = ContentOf(path);
    SDocument large = MakeDocument({Make("polygon", Numbers(100000, 0.125))});
    const int nResult = InChild([&] {
        // A file size limit stops a write as a full disk does.
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{20000, RLIM_INFINITY};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        return SaveOwn(large, path) == "The file could not be written whole." ? 0 : 1;
    });
    QCOMPARE(nResult, 0);
    QCOMPARE(CountIn(folder), 1);
    QCOMPARE(ContentOf(path), before);
}

void tst_AnnotationFiles::aReadOnlyFolderIsTold()
{
    const QTemporaryDir folder;
    const QByteArray native = folder.path().toUtf8();
    QCOMPARE(::chmod(native.constData(), 0555), 0);
    const int nResult = InChild([&] {
        constexpr uid_t kNobody = 65534;
        if (::getuid() == 0 && ::setuid(kNobody) != 0) // root may write everywhere
            return 2;
        return SaveOwn(Small(), PathIn(folder, "a")) == "The file or its folder cannot be written." ? 0 : 1;
    });
    QCOMPARE(::chmod(native.constData(), 0755), 0);
    QCOMPARE(nResult, 0);
    QCOMPARE(CountIn(folder), 0);
}

void tst_AnnotationFiles::afterAKillTheFileIsOldOrNew()
{
    constexpr int kKills = 50;
    const QTemporaryDir folder;
    const std::string path = PathIn(folder, "a.vantor.json");
    const SDocument first = MakeDocument({Make("polygon", Numbers(5000, 0.125))});
    const SDocument second = MakeDocument({Make("polygon", Numbers(5000, 0.25))});
    QCOMPARE(SaveOwn(first, path), std::string());
    Chance chance(3);
    for (int i = 0; i < kKills; ++i) {
        const pid_t nChild = ::fork();
        if (nChild == 0) {
            for (;;) {
                SaveOwn(second, path);
                SaveOwn(first, path);
            }
        }
        ::usleep(static_cast<useconds_t>(chance.Below(8000)));
        ::kill(nChild, SIGKILL);
        ::waitpid(nChild, nullptr, 0);
        SDocument read;
        QCOMPARE(Load(path, "", SContext(), read).failure, std::string());
        const Numbers& numbers = read.pages[0].objects[0].numbers;
        QVERIFY(numbers == Numbers(5000, 0.125) || numbers == Numbers(5000, 0.25));
    }
}

void tst_AnnotationFiles::namesOfClassesStandInAFileBesideTheOther()
{
    const QTemporaryDir folder;
    const std::string path = PathIn(folder, "photo.txt");
    const std::string classes = PathIn(folder, "classes.txt");
    SContext context;
    context.width = 400;
    context.height = 300;
    const auto save = [&](const char* pName) {
        return Save(MakeDocument({Make("rectangle", {10, 20, 30, 40}, pName)}), path, "YOLO", context)
            .failure;
    };
    QCOMPARE(save("cell"), std::string());
    QCOMPARE(ContentOf(classes), QByteArray("cell\n"));
    QCOMPARE(save("spot"), std::string()); // those that are there keep their numbers
    QCOMPARE(ContentOf(classes), QByteArray("cell\nspot\n"));
    QVERIFY(ContentOf(path).startsWith("1 "));
    SDocument read;
    QCOMPARE(Load(path, "", context, read).failure, std::string());
    QCOMPARE(read.pages[0].objects[0].name, std::string("spot"));
    const QByteArray before = ContentOf(path);
    QVERIFY(QFile::remove(QString::fromStdString(classes)) &&
            QDir(folder.path()).mkdir(QStringLiteral("classes.txt")));
    QVERIFY(!save("dot").empty()); // the names cannot be kept, so the numbers are not written
    QCOMPARE(ContentOf(path), before);
    QCOMPARE(Load(path, "", context, read).failure, std::string());
    QCOMPARE(read.pages[0].objects[0].name, std::string("class_1"));
}

void tst_AnnotationFiles::onlyTheKnownFileIsReplacedWhereOneIsKnown()
{
    const QTemporaryDir folder;
    const std::string path = PathIn(folder, "photo.jpg.vantor.json");
    const auto save = [&](double dX, const std::optional<std::string>& known) {
        return Save(Small(dX), path, kOwnFormat, SContext(), known);
    };
    const SReport first = save(1, std::string());
    QCOMPARE(first.failure, std::string());
    QVERIFY(!first.digest.empty());
    const SReport unseen = save(2, std::string()); // nobody has seen the file that is there by now
    QVERIFY(unseen.conflict && !unseen.failure.empty() && unseen.digest.empty());
    const SReport second = save(3, first.digest);
    QVERIFY(second.failure.empty() && !second.conflict);
    const QByteArray before = ContentOf(path);
    QVERIFY(save(4, first.digest).conflict);
    QCOMPARE(ContentOf(path), before);
    QCOMPARE(CountIn(folder), 1);
    SDocument read;
    QCOMPARE(Load(path, "", SContext(), read).digest, second.digest);
    QVERIFY(save(5, std::nullopt).failure.empty()); // no value: whatever is there
    // What is gone can be lost no more; what cannot be read is not called a conflict.
    QVERIFY(QFile::remove(QString::fromStdString(path)));
    QVERIFY(save(6, first.digest).failure.empty());
    SetContent(path, "{");
    const SReport damaged = save(7, first.digest);
    QVERIFY(!damaged.conflict && !damaged.failure.empty());
}

void tst_AnnotationFiles::anIdentityIsNameSizeAndDigest()
{
    const QTemporaryDir folder;
    const std::string path = PathIn(folder, "photo.jpg");
    SetContent(path, "abc");
    const SSource source = IdentityOf(path);
    QCOMPARE(source.name, std::string("photo.jpg"));
    QCOMPARE(source.bytes, std::uint64_t(3));
    QCOMPARE(source.sha256, std::string("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"));
    QVERIFY(IdentityOf(path + "x").sha256.empty());
    QCOMPARE(IdentityOf(path + "x").name, std::string("photo.jpgx"));
    QVERIFY(IdentityOf(folder.path().toStdString()).sha256.empty());
}

void tst_AnnotationFiles::aFileIsAnotherWhenItsBytesAre()
{
    const QTemporaryDir folder;
    const std::string path = PathIn(folder, "photo.jpg");
    SetContent(path, "abc");
    SSource source = IdentityOf(path);
    QVERIFY(!IsOther(source, path));
    SetContent(path, "abd");
    QVERIFY(IsOther(source, path));
    SetContent(path, "abcd");
    QVERIFY(IsOther(source, path));
    source.bytes = 0; // unknown
    QVERIFY(IsOther(source, path));
    SetContent(path, "abc");
    QVERIFY(!IsOther(source, path));
    QVERIFY(!IsOther(source, path + "x"));
    QVERIFY(!IsOther(SSource(), path));
}

VANTOR_CORE_TEST_MAIN(tst_AnnotationFiles)
#include "tst_AnnotationFiles.moc"
