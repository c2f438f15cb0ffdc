// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/annotation/ForeignTests.h"
#include "tests/support/TestMain.h"

#include <Vantor/annotation/ZipArchive_p.h>

#include <QProcess>
#include <QTemporaryDir>

using namespace ForeignTests;

namespace
{
std::string Written(const SDocument& document, Remarks& remarks)
{
    std::string bytes;
    SContext context = Context();
    return WriteRoiSet(document, context, bytes, remarks).IsSuccess() ? bytes : std::string();
}

SDocument ReadBack(const std::string& bytes, Remarks& remarks)
{
    SDocument document;
    const auto result = ReadRoiSet(bytes, Context(), document, remarks);
    if (!result.IsSuccess())
        remarks.push_back({"failure", result.GetReason()});
    return document;
}

/// What a program of Python prints that gets the archive's path.
QByteArray Python(const std::string& archive, const char* pProgram)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("set.zip"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(QByteArray::fromStdString(archive)) < 0)
        return {};
    file.close();
    QProcess python;
    python.start(QStringLiteral("python3"), {QStringLiteral("-c"), QString::fromUtf8(pProgram), path});
    if (!python.waitForFinished() || python.exitCode() != 0)
        return python.readAllStandardError();
    return python.readAllStandardOutput();
}

/// The archive written anew by Python's zipfile, deflated.
std::string Deflated(const std::string& archive)
{
    return Python(archive, "import sys, io, zipfile\n"
                           "old = zipfile.ZipFile(sys.argv[1])\n"
                           "out = io.BytesIO()\n"
                           "new = zipfile.ZipFile(out, 'w', zipfile.ZIP_DEFLATED)\n"
                           "for name in old.namelist(): new.writestr(name, old.read(name))\n"
                           "new.close()\n"
                           "sys.stdout.buffer.write(out.getvalue())\n")
        .toStdString();
}

/// Where the n-th record of the archive's directory begins.
std::size_t Directory(const std::string& bytes, int n)
{
    std::size_t nAt = 0;
    for (int i = 0; i <= n; ++i)
        nAt = bytes.find("PK\1\2", nAt + 1);
    return nAt;
}
} // namespace

class tst_RoiSet : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyLossOfRandomDocumentsIsTold();
    void anotherProgramReadsTheArchive();
    void aDeflatedArchiveIsRead();
    void theLowestComesFirst();
    void entriesHaveNamesThatFilesCanHave();
    void manyOfOneNameTakeNoTime();
    void pagesBecomePositions();
    void theNameOfTheEntryStandsForNone();
    void otherEntriesAreTold();
    void aDamagedEntryIsToldAndTheOthersAreRead();
    void encryptedAndUnknownEntriesAreTold();
    void damagedArchivesGiveNothingThatIsNotWellFormed();
    void claimsBeyondTheLimitAreRefused();
    void theSameContentGivesTheSameBytes();
};

void tst_RoiSet::everyLossOfRandomDocumentsIsTold()
{
    QCOMPARE(UntoldOfRandomDocuments(&WriteRoiSet, &ReadRoiSet, 1000), QString());
}

void tst_RoiSet::anotherProgramReadsTheArchive()
{
    Remarks remarks;
    const std::string bytes =
        Written(DocumentOf({Make("point", {1, 2}, "\xC3\xA9"), Make("rectangle", {1, 2, 3, 4})}), remarks);
    QCOMPARE(Python(bytes,
                    "import sys, zipfile\n"
                    "z = zipfile.ZipFile(sys.argv[1])\n"
                    "print(z.testzip(), ascii(z.namelist()), [len(z.read(n)) for n in z.namelist()])\n"),
             QByteArray("None ['cell.roi', '\\xe9.roi'] [136, 142]\n"));
    QCOMPARE(Python(Written(SDocument(), remarks), "import sys, zipfile\n"
                                                   "print(zipfile.ZipFile(sys.argv[1]).namelist())\n"),
             QByteArray("[]\n"));
}

void tst_RoiSet::aDeflatedArchiveIsRead()
{
    Remarks remarks;
    const SDocument before =
        DocumentOf({Make("polygon", std::vector<double>(2000, 5.0)), Make("point", {1, 2})});
    const std::string stored = Written(before, remarks);
    const std::string deflated = Deflated(stored);
    QVERIFY(deflated.size() < stored.size() / 4);
    const SDocument after = ReadBack(deflated, remarks);
    QCOMPARE(Untold(before.pages[0], after.pages.at(0), remarks), QString());
    QVERIFY(remarks.empty());
}

void tst_RoiSet::theLowestComesFirst()
{
    Remarks remarks;
    const std::string bytes =
        Written(DocumentOf({Make("point", {1, 2}, "top"), Make("point", {3, 4}, "low")}), remarks);
    QVERIFY(bytes.find("low.roi") < bytes.find("top.roi"));
    QCOMPARE(ReadBack(bytes, remarks).pages[0].objects[0].name, std::string("top"));
}

void tst_RoiSet::entriesHaveNamesThatFilesCanHave()
{
    Remarks remarks;
    std::vector<SObject> objects;
    for (const char* pName : {"../../etc/x", "a\\b", "", "..", "Cell", "cell", "cell-1", "a\nb"})
        objects.insert(objects.begin(), Make("point", {1, 2}, pName));
    objects.insert(objects.begin(), Make("point", {1, 2}, std::string(70000, 'x').substr(0, 60000).c_str()));
    const std::string bytes = Written(DocumentOf(objects), remarks);
    QCOMPARE(Python(bytes, "import sys, zipfile\n"
                           "names = zipfile.ZipFile(sys.argv[1]).namelist()\n"
                           "print(names[:-1], len(names[-1]))\n"),
             QByteArray("['region.._.._etc_x.roi', 'a_b.roi', 'region.roi', 'region...roi', 'Cell.roi', "
                        "'cell-1.roi', 'cell-1-1.roi', 'a_b-1.roi'] 204\n"));
    const SDocument after = ReadBack(bytes, remarks);
    QCOMPARE(after.pages[0].objects[0].name.size(), std::size_t(60000));
    QCOMPARE(after.pages[0].objects[8].name, std::string("../../etc/x"));
}

void tst_RoiSet::manyOfOneNameTakeNoTime()
{
    Remarks remarks;
    SDocument document = DocumentOf(std::vector<SObject>(65535, Make("point", {1, 2})));
    QCOMPARE(ReadBack(Written(document, remarks), remarks).pages[0].objects.size(), std::size_t(65535));
    QVERIFY(remarks.empty());
    document.pages[0].objects.push_back(Make("point", {1, 2}));
    QVERIFY(Written(document, remarks).empty());
}

void tst_RoiSet::pagesBecomePositions()
{
    SDocument before = DocumentOf({Make("point", {1, 2}, "a")});
    before.pages.push_back(before.pages[0]);
    before.pages[1].page = 4;
    before.pages[1].objects[0].name = "b";
    Remarks remarks;
    const SDocument after = ReadBack(Written(before, remarks), remarks);
    QVERIFY(remarks.empty());
    QCOMPARE(after.pages.size(), std::size_t(2));
    QVERIFY(after.pages[0].page == 0 && after.pages[0].objects.at(0).name == "a");
    QVERIFY(after.pages[1].page == 4 && after.pages[1].objects.at(0).name == "b");
}

void tst_RoiSet::theNameOfTheEntryStandsForNone()
{
    Remarks remarks;
    std::string region;
    SContext context = Context();
    QVERIFY(WriteRoi(DocumentOf({Make("point", {1, 2}, "")}), context, region, remarks).IsSuccess());
    CZipWriter archive;
    archive.Add("0001-0002.ROI", region);
    QCOMPARE(ReadBack(archive.Finish(), remarks).pages[0].objects.at(0).name, std::string("0001-0002"));
}

void tst_RoiSet::otherEntriesAreTold()
{
    CZipWriter archive;
    archive.Add("folder/", "");
    archive.Add("note.txt", "hello");
    archive.Add("text.roi", "hello");
    Remarks remarks;
    QVERIFY(ReadBack(archive.Finish(), remarks).pages.at(0).objects.empty());
    QCOMPARE(remarks.size(), std::size_t(2));
    QVERIFY(IsTold(remarks, "note.txt", {"left out"}) && IsTold(remarks, "text.roi", {"left out"}));
}

void tst_RoiSet::aDamagedEntryIsToldAndTheOthersAreRead()
{
    Remarks remarks;
    std::string bytes =
        Written(DocumentOf({Make("point", {1, 2}, "good"), Make("point", {3, 4}, "bad")}), remarks);
    bytes[bytes.find("Iout") + 70] ^= 1;
    const SDocument after = ReadBack(bytes, remarks);
    QVERIFY(after.pages[0].objects.size() == 1 && after.pages[0].objects[0].name == "good");
    QVERIFY(IsTold(remarks, "bad.roi", {"damaged"}));
}

void tst_RoiSet::encryptedAndUnknownEntriesAreTold()
{
    Remarks remarks;
    std::string bytes =
        Written(DocumentOf({Make("point", {1, 2}, "b"), Make("point", {3, 4}, "a")}), remarks);
    bytes[Directory(bytes, 0) + 8] |= 1;  // encrypted
    bytes[Directory(bytes, 1) + 10] = 12; // bzip2
    QVERIFY(ReadBack(bytes, remarks).pages[0].objects.empty());
    QVERIFY(IsTold(remarks, "a.roi", {"encrypted"}) && IsTold(remarks, "b.roi", {"compression"}));
}

void tst_RoiSet::damagedArchivesGiveNothingThatIsNotWellFormed()
{
    Remarks remarks;
    const std::string stored = Written(DocumentOf({Make("polygon", {1, 2, 3, 4, 5, 6.5})}), remarks);
    for (std::size_t n = 0; n < stored.size(); ++n) {
        Remarks cut;
        ReadBack(stored.substr(0, n), cut);
        QVERIFY(IsTold(cut, "failure", {"its end is missing"}));
    }
    QVERIFY(ReadDamaged(&ReadRoiSet, stored) > 0);
    QVERIFY(ReadDamaged(&ReadRoiSet, Deflated(stored)) > 0);
}

void tst_RoiSet::claimsBeyondTheLimitAreRefused()
{
    CZipWriter archive;
    archive.Add("a.roi", "x");
    archive.Add("b.roi", "x");
    const std::string small = archive.Finish();
    for (const std::size_t nField : {std::size_t(20), std::size_t(24)}) { // packed, size
        std::string bytes = small;
        for (const int n : {0, 1}) // 48 MiB each
            bytes[Directory(bytes, n) + nField + 3] = 3;
        Remarks remarks;
        ReadBack(bytes, remarks);
        QVERIFY(IsTold(remarks, "failure", {"64 MiB"}));
    }
}

void tst_RoiSet::theSameContentGivesTheSameBytes()
{
    Remarks remarks;
    const SDocument document = RandomDocument(5);
    QCOMPARE(Written(document, remarks), Written(document, remarks));
}

VANTOR_CORE_TEST_MAIN(tst_RoiSet)
#include "tst_RoiSet.moc"
