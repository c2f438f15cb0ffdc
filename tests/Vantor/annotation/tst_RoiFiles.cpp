// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/annotation/ForeignTests.h"
#include "tests/support/TestMain.h"

using namespace ForeignTests;

namespace
{
/// Files that ImageJ 1.53t has written.
const char* const kItsRectangle =
    "496f757400e4010000020001000a000900003fc000004010000040f00000410000000000000000000000000000000000"
    "000000800000000000000000000000400000000000000000000000000000000000000000000000000000000000000000"
    "0000000000000000000000000000000000000000000000000000000000000000";
const char* const kItsLine =
    "496f757400e40300000300020004000a00003fc000004020000041140000404000000000000000000000000000000000"
    "000000000000000000000000000000400000000000000000000000000000000000000000000000000000000000000000"
    "0000000000000000000000000000000000000000000000000000000000000000";
const char* const kItsArrow =
    "496f757400e40300fffafff50009000a00003fc000004020000041140000404000000002000000000000000000000000"
    "00022000000a000000000000000000400000000000000000000000000000000000000080000000050000000000000000"
    "0000000040000000000000000000000000000000000000000000000000000000006e006100ef00760065";
const char* const kItsPolygon =
    "496f757400e4000000010001000500050004000000000000000000000000000000000000000000000000000000000000"
    "00000080000000000000000000000070000000040004000000000000000400043f80000040a0000040a000003f800000"
    "3f8000003f80000040a0000040a000000000000000000000000000000000000000000000000000000000000000000000"
    "0000000000000000000000000000000000000000000000000000000000000000";
const char* const kItsPoint =
    "496f757400e40a0000050004000600050001000000000000000000000000000000000001000000000000000000000000"
    "0000008000000000000000000000004c0000000040600000409000000000000000000000000000000000000000000000"
    "000000000000000000000000000000000000000000000000000000000000008c00000000000000000000000000000000";

std::string Bytes(const char* pHex)
{
    return QByteArray::fromHex(pHex).toStdString();
}

std::string Written(const SObject& object, Remarks& remarks)
{
    std::string bytes;
    SContext context = Context();
    return WriteRoi(DocumentOf({object}), context, bytes, remarks).IsSuccess() ? bytes : std::string();
}

std::vector<SObject> ReadObjects(const std::string& bytes)
{
    SDocument document;
    Remarks remarks;
    const bool bRead = ReadRoi(bytes, Context(), document, remarks).IsSuccess();
    return bRead ? document.pages[0].objects : std::vector<SObject>();
}

/// The bytes of a golden file: the first header, what stands between, the second header with the name "a".
std::string Golden(const char* pFirst, const char* pBetween)
{
    const std::string first = Bytes(pFirst) + Bytes(pBetween);
    std::string second(64, '\0');
    second[19] = static_cast<char>(first.size() + 64);
    second[23] = 1;
    return first + second + std::string("\0a", 2);
}
} // namespace

class tst_RoiFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyKindIsWrittenByteForByte_data();
    void everyKindIsWrittenByteForByte();
    void whatImageJWritesIsRead_data();
    void whatImageJWritesIsRead();
    void everySignOfSizeIsTheSameFile();
    void colorsAndNamesComeBack();
    void pagesBecomePositions();
    void aFileHoldsOneRegionAndTheOthersAreTold();
    void roundingToSinglePrecisionIsTold();
    void placesBeyondSixteenBitsAreKeptByTheFloats();
    void aPolygonOfTooManyCornersIsLeftOut();
    void severalPointsBecomeSeveralAnnotations();
    void wholeCoordinatesAreRead();
    void whatWeHaveNoKindForIsRefused_data();
    void whatWeHaveNoKindForIsRefused();
    void everyLossOfRandomAnnotationsIsTold();
    void damagedFilesGiveNothingThatIsNotWellFormed();
    void claimsOfManyPointsAreNotBelieved();
};

void tst_RoiFiles::everyKindIsWrittenByteForByte_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QVector<double>>("numbers");
    QTest::addColumn<QByteArray>("bytes");
    const auto row = [](const char* pKind, QVector<double> numbers, const char* pFirst,
                        const char* pBetween) {
        QTest::newRow(pKind) << QByteArray(pKind) << numbers
                             << QByteArray::fromStdString(Golden(pFirst, pBetween));
    };
    row("rectangle", {10.5, 20, 49.5, 50.25},
        "496f7574 00e4 0100 0014 000a 0047 003c 0000 41280000 41a00000 42460000 42490000 0000 00000000 "
        "00000000"
        "00000000 0000 0080 0000 0000 00000000 00000040",
        "");
    row("ellipse", {10.5, 20, 49.5, 50.25},
        "496f7574 00e4 0200 0014 000a 0047 003c 0000 41280000 41a00000 42460000 42490000 0000 00000000 "
        "00000000"
        "00000000 0000 0080 0000 0000 00000000 00000040",
        "");
    row("line", {1.5, 2.5, 9.25, 3},
        "496f7574 00e4 0300 0002 0001 0003 000a 0000 3fc00000 40200000 41140000 40400000 0000 00000000 "
        "00000000"
        "00000000 0000 0080 0000 0000 00000000 00000040",
        "");
    row("arrow", {1.5, 2.5, 9.25, 3},
        "496f7574 00e4 0300 0002 0001 0003 000a 0000 3fc00000 40200000 41140000 40400000 0000 00000000 "
        "00000000"
        "00000000 0002 0080 000a 0000 00000000 00000040",
        "");
    row("polygon", {1.5, 1, 5, 1.5, 3, 5},
        "496f7574 00e4 0000 0001 0001 0005 0005 0003 00000000 00000000 00000000 00000000 0000 00000000 "
        "00000000"
        "00000000 0000 0080 0000 0000 00000000 00000064",
        "0000 0004 0002 0000 0000 0004 3fc00000 40a00000 40400000 3f800000 3fc00000 40a00000");
    row("point", {3.5, 4.5},
        "496f7574 00e4 0a00 0004 0003 0005 0004 0001 00000000 00000000 00000000 00000000 0000 00000000 "
        "00000000"
        "00000000 0000 0080 0000 0000 00000000 0000004c",
        "0000 0000 40600000 40900000");
}

void tst_RoiFiles::everyKindIsWrittenByteForByte()
{
    QFETCH(QByteArray, kind);
    QFETCH(QVector<double>, numbers);
    QFETCH(QByteArray, bytes);
    Remarks remarks;
    const SObject object = Make(kind.constData(), {numbers.begin(), numbers.end()}, "a");
    QCOMPARE(QByteArray::fromStdString(Written(object, remarks)).toHex(' '), bytes.toHex(' '));
    QVERIFY(remarks.empty());
    const std::vector<SObject> read = ReadObjects(bytes.toStdString());
    QCOMPARE(read.size(), std::size_t(1));
    QVERIFY(read[0].kind == object.kind && read[0].numbers == object.numbers && read[0].name == "a");
    QVERIFY(read[0].named && read[0].id.size() == 36);
}

void tst_RoiFiles::whatImageJWritesIsRead_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QVector<double>>("numbers");
    QTest::addColumn<QString>("name");
    using Numbers = QVector<double>;
    QTest::newRow("rectangle") << QByteArray(kItsRectangle) << QByteArray("rectangle")
                               << Numbers{1.5, 2.25, 7.5, 8} << "";
    QTest::newRow("line") << QByteArray(kItsLine) << QByteArray("line") << Numbers{1.5, 2.5, 9.25, 3} << "";
    QTest::newRow("arrow") << QByteArray(kItsArrow) << QByteArray("arrow") << Numbers{1.5, 2.5, 9.25, 3}
                           << QString::fromUtf8("na\xC3\xAFve");
    QTest::newRow("polygon") << QByteArray(kItsPolygon) << QByteArray("polygon")
                             << Numbers{1, 1, 5, 1, 5, 5, 1, 5} << "";
    QTest::newRow("point") << QByteArray(kItsPoint) << QByteArray("point") << Numbers{3.5, 4.5} << "";
}

void tst_RoiFiles::whatImageJWritesIsRead()
{
    QFETCH(QByteArray, hex);
    QFETCH(QByteArray, kind);
    QFETCH(QVector<double>, numbers);
    QFETCH(QString, name);
    const std::vector<SObject> objects = ReadObjects(Bytes(hex.constData()));
    QCOMPARE(objects.size(), std::size_t(1));
    QCOMPARE(QByteArray::fromStdString(objects[0].kind), kind);
    QCOMPARE(QVector<double>(objects[0].numbers.begin(), objects[0].numbers.end()), numbers);
    QCOMPARE(QString::fromStdString(objects[0].name), name);
    QCOMPARE(objects[0].named, !name.isEmpty());
}

void tst_RoiFiles::everySignOfSizeIsTheSameFile()
{
    Remarks remarks;
    for (const char* pKind : {"rectangle", "ellipse"}) {
        const std::string bytes = Written(Make(pKind, {10, 20, 5, 7}), remarks);
        QCOMPARE(Written(Make(pKind, {15, 20, -5, 7}), remarks), bytes);
        QCOMPARE(Written(Make(pKind, {10, 27, 5, -7}), remarks), bytes);
        QCOMPARE(Written(Make(pKind, {15, 27, -5, -7}), remarks), bytes);
        QVERIFY(!bytes.empty() && remarks.empty());
    }
}

void tst_RoiFiles::colorsAndNamesComeBack()
{
    SObject object = Make("rectangle", {1, 2, 3, 4}, "\xED\x95\x9C \xF0\x9F\x94\xAC");
    object.style.penColor = 0x80FF0102U;
    object.style.fillColor = 0xFF000000U;
    Remarks remarks;
    const std::vector<SObject> objects = ReadObjects(Written(object, remarks));
    QVERIFY(remarks.empty() && objects.size() == 1);
    QCOMPARE(objects[0].name, object.name);
    QVERIFY(objects[0].style.penColor == object.style.penColor);
    QVERIFY(objects[0].style.fillColor == object.style.fillColor);
    object.style.penColor = 0U; // ImageJ takes that for none
    Written(object, remarks);
    QVERIFY(IsTold(remarks, object.name, {"colour of its outline"}));
}

void tst_RoiFiles::pagesBecomePositions()
{
    SDocument document = DocumentOf({Make("point", {1, 2})});
    document.pages[0].page = 6;
    document.pages.push_back(SPage());
    SContext context = Context();
    std::string bytes;
    Remarks remarks;
    QVERIFY(WriteRoi(document, context, bytes, remarks).IsSuccess());
    QVERIFY(IsTold(remarks, "", {"left out"})); // the other page
    SDocument read;
    QVERIFY(ReadRoi(bytes, context, read, remarks).IsSuccess());
    QCOMPARE(read.pages[0].page, 6);
    QVERIFY(read.pages[0].width == 400 && read.source.name == "photo.jpg");
}

void tst_RoiFiles::aFileHoldsOneRegionAndTheOthersAreTold()
{
    SContext context = Context();
    std::string bytes;
    Remarks remarks;
    const SDocument document = DocumentOf(
        {Make("text", {1, 2, 3}, "t"), Make("point", {1, 2}, "top"), Make("point", {3, 4}, "below")});
    QVERIFY(WriteRoi(document, context, bytes, remarks).IsSuccess());
    QCOMPARE(ReadObjects(bytes)[0].name, std::string("top"));
    QVERIFY(IsTold(remarks, "t", {"left out"}) && IsTold(remarks, "below", {"left out"}));
    QVERIFY(!WriteRoi(DocumentOf({Make("text", {1, 2, 3})}), context, bytes, remarks).IsSuccess());
    QVERIFY(!WriteRoi(SDocument(), context, bytes, remarks).IsSuccess());
}

void tst_RoiFiles::roundingToSinglePrecisionIsTold()
{
    Remarks remarks;
    Written(Make("point", {0.5, 100000.0078125}), remarks);
    QVERIFY(remarks.empty());
    Written(Make("point", {0.1, 1}), remarks);
    QVERIFY(IsTold(remarks, "cell", {"rounded"}));
}

void tst_RoiFiles::placesBeyondSixteenBitsAreKeptByTheFloats()
{
    for (const double dPlace : {-1e6, -5001.0, -4999.0, 32768.0, 60535.0, 1e6}) {
        Remarks remarks;
        for (const SObject& object : {Make("rectangle", {dPlace, dPlace, 8, 16}),
                                      Make("polygon", {dPlace, 0, dPlace + 7, 3, 0, dPlace})}) {
            const std::vector<SObject> objects = ReadObjects(Written(object, remarks));
            QVERIFY(remarks.empty() && objects.size() == 1 && objects[0].numbers == object.numbers);
        }
    }
}

void tst_RoiFiles::aPolygonOfTooManyCornersIsLeftOut()
{
    Remarks remarks;
    SObject object = Make("polygon", std::vector<double>(2 * 65535, 1.0));
    QCOMPARE(ReadObjects(Written(object, remarks))[0].numbers.size(), object.numbers.size());
    QVERIFY(remarks.empty());
    object.numbers.resize(object.numbers.size() + 2);
    QVERIFY(Written(object, remarks).empty());
    QVERIFY(IsTold(remarks, "cell", {"left out"}));
}

void tst_RoiFiles::severalPointsBecomeSeveralAnnotations()
{
    Remarks remarks;
    std::string bytes = Written(Make("polygon", {1, 2, 3, 4, 5, 6}), remarks);
    bytes[6] = 10;
    const std::vector<SObject> objects = ReadObjects(bytes);
    QCOMPARE(objects.size(), std::size_t(3));
    QVERIFY(objects[0].numbers == (std::vector<double>{5, 6}) && objects[2].kind == "point");
}

void tst_RoiFiles::wholeCoordinatesAreRead()
{
    Remarks remarks;
    for (const char* pKind : {"rectangle", "ellipse"}) {
        std::string bytes = Written(Make(pKind, {10.5, 20, 49.5, 50.25}), remarks);
        bytes[51] = 0;
        QCOMPARE(ReadObjects(bytes)[0].numbers, (std::vector<double>{10, 20, 50, 51}));
    }
    std::string bytes = Written(Make("polygon", {10.5, 20.5, 60, 21, 30, 70}), remarks);
    bytes[51] = 0;
    QCOMPARE(ReadObjects(bytes)[0].numbers, (std::vector<double>{10, 20, 60, 21, 30, 70}));
}

void tst_RoiFiles::whatWeHaveNoKindForIsRefused_data()
{
    QTest::addColumn<int>("at");
    QTest::addColumn<int>("value");
    QTest::newRow("open line") << 6 << 5;
    QTest::newRow("free line") << 6 << 4;
    QTest::newRow("angle") << 6 << 9;
    QTest::newRow("none") << 6 << 6;
    QTest::newRow("unknown type") << 6 << 11;
    QTest::newRow("text") << 49 << 1;
    QTest::newRow("image") << 49 << 4;
    QTest::newRow("several shapes") << 39 << 1;
    QTest::newRow("other file") << 0 << int('i');
}

void tst_RoiFiles::whatWeHaveNoKindForIsRefused()
{
    QFETCH(int, at);
    QFETCH(int, value);
    std::string bytes = Bytes(kItsRectangle);
    bytes[static_cast<std::size_t>(at)] = static_cast<char>(value);
    SDocument document;
    Remarks remarks;
    const auto result = ReadRoi(bytes, Context(), document, remarks);
    QVERIFY(!result.IsSuccess() && result.GetReason().size() > 10);
}

void tst_RoiFiles::everyLossOfRandomAnnotationsIsTold()
{
    CDice dice(17);
    for (int i = 0; i < 3000; ++i) {
        const SObject before = RandomObject(dice, i);
        Remarks remarks;
        const std::vector<SObject> objects = ReadObjects(Written(before, remarks));
        SPage after;
        after.objects = objects;
        QCOMPARE(Untold(DocumentOf({before}).pages[0], after, remarks), QString());
    }
}

void tst_RoiFiles::damagedFilesGiveNothingThatIsNotWellFormed()
{
    Remarks remarks;
    QVERIFY(ReadDamaged(&ReadRoi, Written(Make("polygon", {10.5, 20.5, 60, 21, 30, 70}), remarks)) > 0);
    QVERIFY(ReadDamaged(&ReadRoi, Bytes(kItsArrow)) > 0);
}

void tst_RoiFiles::claimsOfManyPointsAreNotBelieved()
{
    std::string bytes = Bytes(kItsPoint);
    bytes[16] = bytes[17] = 0;
    for (const int nFirst : {0x00, 0x10, 0x7F, 0xFF}) {
        bytes[18] = static_cast<char>(nFirst);
        bytes[19] = bytes[20] = bytes[21] = static_cast<char>(0xFF);
        QVERIFY(ReadObjects(bytes).empty());
    }
}

VANTOR_CORE_TEST_MAIN(tst_RoiFiles)
#include "tst_RoiFiles.moc"
