// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "Documents.h"
#include "tests/support/TestMain.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QUuid>

#include <cmath>
#include <limits>
#include <set>

using namespace Documents;

namespace
{
std::string Written(const SDocument& document)
{
    SContext context;
    std::string bytes;
    const SReport report = Write(document, kOwnFormat, context, bytes);
    return report.failure.empty() ? bytes : "failure: " + report.failure;
}

std::string FailureOfWriting(const SDocument& document)
{
    SContext context;
    std::string bytes = "kept";
    const SReport report = Write(document, kOwnFormat, context, bytes);
    return bytes == "kept" ? report.failure : std::string();
}

/// A file with these objects.
std::string FileOf(const std::string& objects)
{
    return R"({"format":"vantor-annotations","version":1,"readable_by":1,"pages":[{"page":0,"objects":[)" +
           objects + "]}]}";
}

SReport ReadInto(const std::string& bytes, SDocument& document)
{
    return Read(bytes, kOwnFormat, SContext(), document);
}

/// Documents in which everything that there is occurs, sooner or later.
SDocument RandomDocument(Chance& chance)
{
    std::vector<std::string> kinds = BuiltInKinds();
    kinds.insert(kinds.end(), {"stamp", "wave \"3\""});
    SDocument document;
    document.generator = chance.Text();
    document.saved = chance.Text();
    document.source = {chance.Text(), chance.OneIn(2) ? 0 : ~std::uint64_t{0},
                       chance.OneIn(2) ? std::string() : std::string(64, 'a')};
    if (chance.OneIn(3))
        document.unknown = R"({"later":[1,{"a":9007199254740993}]})";
    document.pages.resize(static_cast<std::size_t>(chance.Below(3)));
    for (SPage& page : document.pages) {
        page.page = chance.Below(5);
        page.image = chance.Text();
        page.width = chance.Below(5000);
        page.height = chance.Below(5000);
        page.dpi = chance.OneIn(2) ? 144.5 : 0.0;
        if (chance.OneIn(2))
            page.calibration =
                SCalibration{chance.Text(), 0.1, 1.0 / 3.0, chance.OneIn(2) ? 1.0 / 7.0 : 0.0, 0.0};
        if (chance.OneIn(3))
            page.unknown = page.calibration ? R"({"calibration":{"z":1e2},"dim":-0.0})" : R"({"dim":-0.0})";
        for (int i = chance.Below(6); i > 0; --i) {
            page.objects.push_back(chance.Object(kinds));
            if (chance.OneIn(4))
                page.objects.back().extra = R"({"b" : 1.50, "a":[ ]})";
            if (chance.OneIn(4))
                page.objects.back().unknown = R"({"dash":[2,1]})";
        }
        if (chance.OneIn(4)) {
            page.objects.emplace_back();
            page.objects.back().raw = R"({"kind":"cloud","puffs" : 3.140})";
        }
    }
    return document;
}
} // namespace

Q_DECLARE_METATYPE(std::string)
Q_DECLARE_METATYPE(Vantor::Annotations::SDocument)

/// Our own format of files of annotations.
class tst_OwnFormat : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyKindAndEverySignOfSizeComesBackToTheBit();
    void tenThousandRandomDocumentsComeBackToTheBit();
    void aFileSaysWhatItIsInMembersThatPeopleCanRead();
    void unknownMembersOfAllLevelsAreWrittenBackLetterForLetter();
    void aKnownMemberIsNeverWrittenTwice();
    void whatIsUnknownOfACalibrationGoesWithIt();
    void whatCannotBeReadIsKeptInItsPlace_data();
    void whatCannotBeReadIsKeptInItsPlace();
    void annotationsWithoutAnIdentityOfTheirOwnGetOne();
    void aLaterVersionIsOnlyShown();
    void anAdditionOfALaterVersionIsWrittenBackWithItsVersion();
    void aDamagedFileIsRefusedAndTheDocumentStays_data();
    void aDamagedFileIsRefusedAndTheDocumentStays();
    void hostileFilesAreRefused();
    void whatTheReaderWouldNotTakeIsNotWritten_data();
    void whatTheReaderWouldNotTakeIsNotWritten();
    void aHundredThousandAnnotationsAreReadWithinASecond();
};

void tst_OwnFormat::everyKindAndEverySignOfSizeComesBackToTheBit()
{
    std::vector<SObject> objects;
    for (const char* pKind : {"rectangle", "ellipse"}) {
        for (const double dWidth : {0.1, -0.1, 0.0, -0.0}) {
            for (const double dHeight : {0.2, -0.2, 0.0, -0.0}) {
                objects.push_back(Make(pKind, {0.3, 0.7, dWidth, dHeight}));
                objects.push_back(Make(pKind, {0.3, 0.7, dWidth, dHeight, 1e-17, -0.0}));
            }
        }
    }
    for (const char* pKind : {"ruler", "line", "arrow"})
        objects.push_back(Make(pKind, {1e9, -1e9, 5e-324, 1.0 / 3.0}));
    objects.push_back(Make("circle", {-1.5, 2.5, 0.0}));
    objects.push_back(Make("polygon", {0, 0, 1.1, 0, 1.1, 2.2}));
    objects.push_back(Make("point", {-0.0, 0.1}));
    objects.push_back(Make("text", {1, 2, 12.5}));
    objects.back().text = "two\nlines";
    objects.push_back(Make("star", {}));
    for (std::size_t i = 0; i < objects.size(); ++i)
        objects[i].id = QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString();
    const SDocument document = MakeDocument(objects);
    SDocument read;
    QCOMPARE(ReadInto(Written(document), read).failure, std::string());
    QCOMPARE(Difference(document, read), QString());
}

void tst_OwnFormat::tenThousandRandomDocumentsComeBackToTheBit()
{
    Chance chance(13);
    int nObjects = 0;
    for (int i = 0; i < 10000; ++i) {
        const SDocument document = RandomDocument(chance);
        const std::string bytes = Written(document);
        SDocument read;
        const SReport report = ReadInto(bytes, read);
        QVERIFY2(report.failure.empty(), (report.failure + bytes).c_str());
        const QString strDifference = Difference(document, read);
        QVERIFY2(strDifference.isEmpty(), qPrintable(strDifference + QString::fromStdString(bytes)));
        QCOMPARE(Written(read), bytes);
        for (const SPage& page : document.pages)
            nObjects += static_cast<int>(page.objects.size());
        // Another reader of JSON takes it, too.
        QVERIFY(i % 10 != 0 || QJsonDocument::fromJson(QByteArray::fromStdString(bytes)).isObject());
    }
    QVERIFY(nObjects > 10000);
}

void tst_OwnFormat::aFileSaysWhatItIsInMembersThatPeopleCanRead()
{
    SDocument document =
        MakeDocument({Make("rectangle", {10.5, 20, -3, 4, 7.5, 24}), Make("circle", {1, 2, 3}, "")});
    document.generator = "Vantor 1.1.0";
    document.saved = "2026-12-01T10:00:00Z";
    document.source = {"photo.jpg", 123456, std::string(64, 'b')};
    document.pages[0].calibration = SCalibration{"mm", 0.1, 0.1, 0.0, 4.5};
    document.pages[0].objects[0].style = {0x80ff0000U, 2.5, std::nullopt};
    QCOMPARE(QString::fromStdString(Written(document)),
             QStringLiteral(
                 R"({"format":"vantor-annotations","version":1,"readable_by":1,)"
                 R"("generator":"Vantor 1.1.0","saved":"2026-12-01T10:00:00Z",)"
                 "\n"
                 R"("source":{"name":"photo.jpg","bytes":123456,"sha256":"%1"},)"
                 "\n"
                 R"("pages":[)"
                 "\n"
                 R"({"page":0,"width":400,"height":300,)"
                 R"("calibration":{"unit":"mm","x":0.1,"y":0.1,"origin":[0,4.5]},"objects":[)"
                 "\n"
                 R"({"kind":"rectangle","name":"cell","named":true,"show_name":true,)"
                 R"("box":[10.5,20,-3,4],"corner":[7.5,24],"style":{"pen":"#80ff0000","pen_width":2.5}},)"
                 "\n"
                 R"({"kind":"circle","name":"","named":false,"show_name":true,)"
                 R"("centre":[1,2],"radius":3}]}]})"
                 "\n")
                 .arg(QString(64, QLatin1Char('b'))));
}

void tst_OwnFormat::unknownMembersOfAllLevelsAreWrittenBackLetterForLetter()
{
    const std::string bytes =
        R"({"format":"vantor-annotations","version":1,"readable_by":1,"a":9007199254740993,)"
        R"("source":{"name":"x.png","inode":-0},"pages":[{"page":0,"b":[ 1.50 ],)"
        R"("calibration":{"unit":"mm","x":1,"y":2,"z":1e2},"objects":[{"kind":"point","points":[[1,2]],)"
        R"("\u0063":"\u00e4","style":{"pen":"#ff000000","dash":[1,  2]}}]}]})";
    SDocument document;
    const SReport report = ReadInto(bytes, document);
    QCOMPARE(report.failure, std::string());
    QVERIFY(report.remarks.empty());
    QCOMPARE(document.pages[0].objects[0].unknown,
             std::string(R"({"style":{"dash":[1,  2]},"\u0063":"\u00e4"})"));
    const std::string written = Written(document);
    for (const char* pPiece :
         {R"("a":9007199254740993)", R"({"name":"x.png","inode":-0})", R"("b":[ 1.50 ])",
          R"("x":1,"y":2,"z":1e2})", R"("\u0063":"\u00e4")", R"("style":{"pen":"#ff000000","dash":[1,  2]})"})
        QVERIFY2(written.find(pPiece) != std::string::npos, (std::string(pPiece) + " in " + written).c_str());
    SDocument again;
    QVERIFY(ReadInto(written, again).failure.empty());
    QCOMPARE(Difference(document, again), QString());
}

void tst_OwnFormat::aKnownMemberIsNeverWrittenTwice()
{
    SObject object = Make("point", {1, 2});
    object.unknown = R"({"kind":"x","points":3,"name":[],"dash":1})";
    SDocument read;
    QVERIFY(ReadInto(Written(MakeDocument({object})), read).remarks.empty());
    QCOMPARE(read.pages[0].objects[0].unknown, std::string(R"({"dash":1})"));
    QCOMPARE(read.pages[0].objects[0].kind, std::string("point"));
}

void tst_OwnFormat::whatIsUnknownOfACalibrationGoesWithIt()
{
    SDocument document = MakeDocument({});
    document.pages[0].unknown = R"({"calibration":{"z":1e2},"dim":1})";
    SDocument read;
    QVERIFY(ReadInto(Written(document), read).failure.empty());
    QVERIFY(!read.pages[0].calibration);
    QCOMPARE(read.pages[0].unknown, std::string(R"({"dim":1})"));
}

void tst_OwnFormat::whatCannotBeReadIsKeptInItsPlace_data()
{
    QTest::addColumn<std::string>("object");
    const auto row = [](const char* pName, const std::string& object) { QTest::newRow(pName) << object; };
    row("no object", "[1]");
    row("no kind", R"({"points":[[1,2]]})");
    row("a kind without numbers", R"({"kind":"cloud","puffs":3})");
    row("a kind with odd numbers", R"({"kind":"cloud","numbers":[1,"2"]})");
    row("a member twice", R"({"kind":"point","points":[[1,2]],"points":[[3,4]]})");
    row("a member twice, differently spelt", R"({"kind":"point","points":[[1,2]],"poi\u006ets":[[3,4]]})");
    row("an unknown member twice", R"({"kind":"point","points":[[1,2]],"x":1,"x":1})");
    row("a member of style twice", R"({"kind":"point","points":[[1,2]],"style":{"dash":1,"dash":2}})");
    row("a wrong type", R"({"kind":"point","points":[[1,2]],"locked":1})");
    row("a wrong colour", R"({"kind":"point","points":[[1,2]],"style":{"pen":"#ffffff"}})");
    row("a negative width", R"({"kind":"point","points":[[1,2]],"style":{"pen_width":-1}})");
    row("too few numbers", R"({"kind":"rectangle","box":[1,2,3]})");
    row("too many numbers", R"({"kind":"rectangle","box":[1,2,3,4,5]})");
    row("a point of three", R"({"kind":"ruler","points":[[1,2],[3,4,5]]})");
    row("two corners", R"({"kind":"polygon","points":[[1,2],[3,4]]})");
    row("a negative radius", R"({"kind":"circle","centre":[1,2],"radius":-1})");
    row("too far away", R"({"kind":"point","points":[[1,1.1e9]]})");
    row("no double", R"({"kind":"point","points":[[1,1e400]]})");
    row("half a pair", R"({"kind":"point","points":[[1,2]],"name":"\ud800"})");
    row("a text too long", R"({"kind":"point","points":[[1,2]],"name":")" + std::string(65537, 'x') + "\"}");
}

void tst_OwnFormat::whatCannotBeReadIsKeptInItsPlace()
{
    QFETCH(std::string, object);
    const std::string first = R"({"kind":"point","points":[[1,2]]})";
    SDocument document;
    const SReport report = ReadInto(FileOf(first + ",\n " + object + "," + first), document);
    QCOMPARE(report.failure, std::string());
    QCOMPARE(report.remarks.size(), std::size_t(1));
    QVERIFY(report.remarks[0].text.find("does not understand: 1.") != std::string::npos);
    const std::vector<SObject>& objects = document.pages[0].objects;
    QCOMPARE(objects.size(), std::size_t(3));
    QCOMPARE(objects[0].kind, std::string("point"));
    QCOMPARE(objects[1].raw, object);
    QVERIFY(objects[1].kind.empty() && objects[1].id.empty() && objects[1].numbers.empty());
    QVERIFY(Written(document).find(",\n" + object + ",\n") != std::string::npos);
}

void tst_OwnFormat::annotationsWithoutAnIdentityOfTheirOwnGetOne()
{
    const std::string id = "0f8fad5b-d9cb-469f-a165-70867728950e";
    const std::string object = R"({"kind":"point","points":[[1,2]])";
    SDocument document;
    const SReport report =
        ReadInto(FileOf(object + R"(,"id":"{0F8FAD5B-D9CB-469F-A165-70867728950E}"},)" + object +
                        R"(,"id":")" + id + R"("},)" + object + R"(,"id":"seven"},)" + object + "}"),
                 document);
    QCOMPARE(document.pages[0].objects[0].id, id);
    std::set<std::string> ids;
    for (const SObject& point : document.pages[0].objects) {
        QVERIFY(!QUuid::fromString(QString::fromStdString(point.id)).isNull());
        QCOMPARE(point.id.size(), std::size_t(36));
        ids.insert(point.id);
    }
    QCOMPARE(ids.size(), std::size_t(4));
    QCOMPARE(report.remarks.size(), std::size_t(1)); // of the two that lost theirs
    QVERIFY(report.remarks[0].text.find(": 2.") != std::string::npos);
}

void tst_OwnFormat::aLaterVersionIsOnlyShown()
{
    SDocument document;
    const SReport report = ReadInto(R"({"format":"vantor-annotations","version":3,"readable_by":2,"pages":[)"
                                    R"({"objects":[{"kind":"point","points":[[1,2]]}]}]})",
                                    document);
    QCOMPARE(report.failure, std::string());
    QCOMPARE(report.remarks.size(), std::size_t(1));
    QVERIFY(document.IsReadOnly());
    QCOMPARE(document.pages[0].objects.size(), std::size_t(1));
    QVERIFY(FailureOfWriting(document).find("later version") != std::string::npos);
    QVERIFY(ReadInto(R"({"format":"vantor-annotations","version":2,"pages":{}})", document)
                .failure.find("later version") != std::string::npos);
}

void tst_OwnFormat::anAdditionOfALaterVersionIsWrittenBackWithItsVersion()
{
    SDocument document;
    QVERIFY(ReadInto(R"({"format":"vantor-annotations","version":2,"readable_by":1,"new":1,"pages":[]})",
                     document)
                .remarks.empty());
    QVERIFY(!document.IsReadOnly());
    SDocument again;
    QVERIFY(ReadInto(Written(document), again).failure.empty());
    QCOMPARE(Difference(document, again), QString());
    QCOMPARE(again.version, 2);
}

void tst_OwnFormat::aDamagedFileIsRefusedAndTheDocumentStays_data()
{
    QTest::addColumn<std::string>("bytes");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* pName, const std::string& bytes, const char* pReason) {
        QTest::newRow(pName) << bytes << QString::fromLatin1(pReason);
    };
    const std::string whole = FileOf(R"({"kind":"point","points":[[1,2]]})");
    row("empty", "", "It is damaged at byte 0.");
    row("cut short", whole.substr(0, whole.size() - 2), "It is damaged at byte 124.");
    row("more behind it", whole + "x", "It is damaged at byte 126.");
    row("not a number", FileOf(R"({"kind":"point","points":[[1,NaN]]})"), "It is damaged at byte 118.");
    row("a comma too many", FileOf("{},"), "It is damaged at byte 92.");
    row("no UTF-8", FileOf("\"\xc3\x28\""), "It is damaged at byte 90.");
    row("something else", R"({"shapes":[]})", "It is not a file of annotations of this format.");
    row("no object", "[]", "It is not a file of annotations of this format.");
    const std::string head = R"({"format":"vantor-annotations","version":1)";
    row("no pages", head + "}", "It is damaged: \"pages\" of the file is wrong.");
    row("two pages", head + R"(,"pages":[],"pages":[]})", "It is damaged: \"pages\" of the file is wrong.");
    row("a version that is none", head + R"(,"readable_by":1.5,"pages":[]})",
        "It is damaged: \"readable_by\" of the file is wrong.");
    row("a wrong size", head + R"(,"pages":[{"width":-1}]})", "It is damaged: \"width\" of page 1 is wrong.");
    row("a page that is none", head + R"(,"pages":[{},7]})", "It is damaged: \"{}\" of page 2 is wrong.");
    row("a wrong digest", head + R"(,"source":{"sha256":"AB"},"pages":[]})",
        "It is damaged: \"sha256\" of \"source\" is wrong.");
    row("a pixel without a size", head + R"(,"pages":[{"calibration":{"x":0}}]})",
        "It is damaged: \"calibration\" of page 1 is wrong.");
    for (const char* pOrigin : {"7", "[1]", "[1,2,3]", "[1,2e9]", "[\"a\",1]"})
        row(pOrigin, head + R"(,"pages":[{"calibration":{"origin":)" + pOrigin + "}}]}",
            "It is damaged: \"calibration\" of page 1 is wrong.");
}

void tst_OwnFormat::aDamagedFileIsRefusedAndTheDocumentStays()
{
    QFETCH(std::string, bytes);
    QFETCH(QString, reason);
    SDocument document = MakeDocument({Make("point", {1, 2})});
    const SReport report = ReadInto(bytes, document);
    QCOMPARE(QString::fromStdString(report.failure), reason);
    QVERIFY(report.remarks.empty());
    QCOMPARE(Difference(document, MakeDocument({Make("point", {1, 2})})), QString());
}

void tst_OwnFormat::hostileFilesAreRefused()
{
    SDocument document;
    const auto failureOf = [&document](const std::string& bytes) {
        return ReadInto(bytes, document).failure;
    };
    QCOMPARE(failureOf(std::string(1000000, '[')), std::string("It is nested too deeply."));
    QCOMPARE(failureOf(FileOf(std::string(13, '[') + std::string(13, ']'))),
             std::string("It is nested too deeply."));
    QCOMPARE(failureOf(FileOf(std::string(12, '[') + std::string(12, ']'))), std::string());
    QCOMPARE(failureOf(std::string((64U << 20U) + 1, ' ')), std::string("The file is larger than 64 MiB."));
    std::string objects = "0";
    for (int i = 0; i < 1000000; ++i)
        objects += ",0";
    QCOMPARE(failureOf(FileOf(objects)), std::string("It has too many annotations."));
    QCOMPARE(failureOf(FileOf(objects.substr(2))), std::string());
    std::string numbers = "0";
    for (int i = 0; i < 20000000; ++i)
        numbers += ",0";
    QCOMPARE(failureOf(FileOf(R"({"kind":"k","numbers":[)" + numbers + "]}")),
             std::string("Its annotations have too many points."));
    std::string pages = "{}";
    for (int i = 0; i < 100000; ++i)
        pages += ",{}";
    QCOMPARE(failureOf(R"({"format":"vantor-annotations","version":1,"pages":[)" + pages + "]}"),
             std::string("It has too many pages."));
    std::string members = R"("kind":"point","points":[[1,2]])";
    for (int i = 0; i < 1000; ++i)
        members += ",\"" + std::to_string(i) + "\":1";
    QCOMPARE(failureOf(FileOf("{" + members + "}")), std::string());
    QVERIFY(document.pages[0].objects[0].raw.empty());
    QCOMPARE(failureOf(Written(document)), std::string()); // with a name, which it had not
    QVERIFY(document.pages[0].objects[0].raw.empty());
    QCOMPARE(failureOf(FileOf("{" + members + ",\"more\":1}")), std::string());
    QVERIFY(!document.pages[0].objects[0].raw.empty());
}

void tst_OwnFormat::whatTheReaderWouldNotTakeIsNotWritten_data()
{
    QTest::addColumn<SDocument>("document");
    const auto row = [](const char* pName, const SDocument& document) { QTest::newRow(pName) << document; };
    const auto object = [&row](const char* pName, SObject made, auto change) {
        change(made);
        row(pName, MakeDocument({Make("point", {1, 2}), made}));
    };
    const SObject point = Make("point", {1, 2});
    object("NaN", point, [](SObject& o) { o.numbers[0] = std::numeric_limits<double>::quiet_NaN(); });
    object("infinity", point, [](SObject& o) { o.numbers[1] = std::numeric_limits<double>::infinity(); });
    object("too far away", point, [](SObject& o) { o.numbers[1] = -1.0000001e9; });
    object("too few numbers", point, [](SObject& o) { o.numbers.pop_back(); });
    object("no kind", point, [](SObject& o) { o.kind.clear(); });
    object("a pen that is none", point, [](SObject& o) { o.style.penWidth = std::nan(""); });
    object("a name too long", point, [](SObject& o) { o.name.assign(65537, 'x'); });
    object("extra that is no JSON", point, [](SObject& o) { o.extra = "{"; });
    object("extra that would break out", point, [](SObject& o) { o.extra = R"(1,"kind":"x")"; });
    object("extra too deep", point,
           [](SObject& o) { o.extra = std::string(12, '[') + std::string(12, ']'); });
    object("unknown that is no object", point, [](SObject& o) { o.unknown = "[]"; });
    object("raw that is no JSON", SObject(), [](SObject& o) { o.raw = "}"; });
    SDocument document = MakeDocument({});
    document.source.sha256 = "AB";
    row("a digest that is none", document);
    document = MakeDocument({});
    document.pages[0].calibration = SCalibration{"mm", 0.0, 1.0};
    row("a pixel without a size", document);
    document.pages[0].calibration = SCalibration{"mm", 1.0, 1.0, std::nan(""), 0.0};
    row("an origin that is no place", document);
}

void tst_OwnFormat::whatTheReaderWouldNotTakeIsNotWritten()
{
    QFETCH(SDocument, document);
    const std::string failure = FailureOfWriting(document);
    QVERIFY2(failure.size() > 10 && failure.back() == '.', failure.c_str());
}

void tst_OwnFormat::aHundredThousandAnnotationsAreReadWithinASecond()
{
    Chance chance(1);
    SDocument document = MakeDocument({});
    for (int i = 0; i < 100000; ++i)
        document.pages[0].objects.push_back(chance.Object(BuiltInKinds()));
    QElapsedTimer timer;
    timer.start();
    const std::string bytes = Written(document);
    const qint64 nWriting = timer.restart();
    SDocument read;
    QVERIFY(ReadInto(bytes, read).failure.empty());
    const qint64 nReading = timer.elapsed();
    qInfo("%d bytes: written in %d ms, read in %d ms", static_cast<int>(bytes.size()),
          static_cast<int>(nWriting), static_cast<int>(nReading));
    QCOMPARE(read.pages[0].objects.size(), std::size_t(100000));
    QVERIFY(nReading < 10000); // a machine under load, a build without optimisation
}

VANTOR_CORE_TEST_MAIN(tst_OwnFormat)
#include "tst_OwnFormat.moc"
