// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/annotation/ForeignTests.h"
#include "tests/support/TestMain.h"

using namespace ForeignTests;

namespace
{
/// A file of one image with these elements.
std::string File(const std::string& shapes)
{
    return "<annotations><version>1.1</version><image id=\"7\" name=\"a.jpg\" width=\"400\" height=\"300\">" +
           shapes + "</image></annotations>";
}

std::string Written(const SDocument& document, Remarks& remarks)
{
    SContext context = Context();
    std::string bytes;
    return WriteCvat(document, context, bytes, remarks).IsSuccess() ? bytes : std::string();
}

SDocument ReadBack(const std::string& bytes, Remarks& remarks)
{
    SDocument document;
    const auto result = ReadCvat(bytes, Context(), document, remarks);
    if (!result.IsSuccess())
        remarks.push_back({"failure", result.GetReason()});
    return document;
}
} // namespace

class tst_Cvat : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyKindHasItsElement_data();
    void everyKindHasItsElement();
    void theLabelsStandBeforehand();
    void everyLossOfRandomDocumentsIsTold();
    void anotherProgramsFileIsRead();
    void theOrderIsThatOfDepth();
    void turnedShapesBecomePolygons();
    void whatIsNotReadIsTold_data();
    void whatIsNotReadIsTold();
    void imagesAndPagesComeBack();
    void damagedFilesGiveNothingThatIsNotWellFormed();
};

void tst_Cvat::everyKindHasItsElement_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QVector<double>>("numbers");
    QTest::addColumn<QByteArray>("element");
    using Numbers = QVector<double>;
    const auto row = [](const char* pKind, Numbers numbers, const char* pElement) {
        QTest::newRow(pKind) << QByteArray(pKind) << numbers << QByteArray(pElement);
    };
    row("rectangle", {60, 70.25, -49.5, -50.25}, "<box xtl=\"10.5\" ytl=\"20\" xbr=\"60\" ybr=\"70.25\" ");
    row("ellipse", {80, 80, 40, 20}, "<ellipse cx=\"100\" cy=\"90\" rx=\"20\" ry=\"10\" ");
    row("circle", {100, 90, 20}, "<ellipse cx=\"100\" cy=\"90\" rx=\"20\" ry=\"20\" ");
    row("polygon", {1, 2, 3.5, 4, 5, 6}, "<polygon points=\"1,2;3.5,4;5,6\" ");
    row("ruler", {1, 2, 3.5, 4}, "<polyline points=\"1,2;3.5,4\" ");
    row("point", {1, 2.5}, "<points points=\"1,2.5\" ");
}

void tst_Cvat::everyKindHasItsElement()
{
    QFETCH(QByteArray, kind);
    QFETCH(QVector<double>, numbers);
    QFETCH(QByteArray, element);
    Remarks remarks;
    const std::string bytes =
        Written(DocumentOf({Make(kind.constData(), {numbers.begin(), numbers.end()})}), remarks);
    const std::string rest = "label=\"cell\" source=\"manual\" occluded=\"0\" z_order=\"0\"/>";
    QVERIFY2(bytes.find(element.toStdString() + rest) != std::string::npos, bytes.c_str());
    QCOMPARE(remarks.size(), std::size_t(kind == "circle" || kind == "ruler" ? 1 : 0));
}

void tst_Cvat::theLabelsStandBeforehand()
{
    Remarks remarks;
    const std::string bytes = Written(DocumentOf({Make("point", {1, 2}, "b"), Make("point", {1, 2}, "a&b"),
                                                  Make("rectangle", {1, 2, 3, 4}, "b")}),
                                      remarks);
    QCOMPARE(QString::fromStdString(bytes).count(QStringLiteral("<label>")), 2);
    QVERIFY(bytes.find("<name>a&amp;b</name>") < bytes.find("<image "));
}

void tst_Cvat::everyLossOfRandomDocumentsIsTold()
{
    QCOMPARE(UntoldOfRandomDocuments(&WriteCvat, &ReadCvat, 1000), QString());
}

void tst_Cvat::anotherProgramsFileIsRead()
{
    Remarks remarks;
    const SDocument document = ReadBack(
        "<?xml version=\"1.0\" "
        "encoding=\"utf-8\"?><annotations><version>1.1</version><meta><task><name>t</name>"
        "<labels><label><name>cell</name><attributes/></label></labels></task></meta>"
        "<image id=\"0\" name=\"photo.jpg\" width=\"400\" height=\"300\">"
        "<box label=\"cell\" source=\"manual\" occluded=\"0\" xtl=\"10.50\" ytl=\"20.00\" xbr=\"60.00\" "
        "ybr=\"70.25\" z_order=\"0\"></box>"
        "<ellipse label=\"cell\" occluded=\"0\" cx=\"100\" cy=\"90\" rx=\"20\" ry=\"10\" z_order=\"1\"/>"
        "<points label=\"p\" points=\"1.00,2.00;3.00,4.00\"/></image></annotations>",
        remarks);
    QVERIFY(remarks.empty());
    QCOMPARE(document.source.name, std::string("photo.jpg"));
    const SPage& page = document.pages.at(0);
    QVERIFY(page.width == 400 && page.height == 300 && page.image.empty());
    QCOMPARE(page.objects.size(), std::size_t(4));
    QVERIFY(page.objects[0].kind == "ellipse" &&
            page.objects[0].numbers == (std::vector<double>{80, 80, 40, 20}));
    QVERIFY(page.objects[1].kind == "point" && page.objects[1].numbers == (std::vector<double>{3, 4}));
    QVERIFY(page.objects[3].numbers == (std::vector<double>{10.5, 20, 49.5, 50.25}));
}

void tst_Cvat::theOrderIsThatOfDepth()
{
    Remarks remarks;
    const SPage page = ReadBack(File("<points label=\"a\" points=\"1,2\" z_order=\"5\"/>"
                                     "<points label=\"b\" points=\"1,2\" z_order=\"-1\"/>"
                                     "<points label=\"c\" points=\"1,2\" z_order=\"5\"/>"),
                                remarks)
                           .pages.at(0);
    QCOMPARE(page.objects[0].name + page.objects[1].name + page.objects[2].name, std::string("cab"));
}

void tst_Cvat::turnedShapesBecomePolygons()
{
    Remarks remarks;
    const SPage page =
        ReadBack(File("<box label=\"a\" xtl=\"0\" ytl=\"0\" xbr=\"20\" ybr=\"10\" rotation=\"90\"/>"),
                 remarks)
            .pages.at(0);
    const std::vector<double> corners{15, -5, 15, 15, 5, 15, 5, -5}; // clockwise on the screen
    QCOMPARE(page.objects.at(0).kind, std::string("polygon"));
    for (std::size_t i = 0; i < corners.size(); ++i)
        QVERIFY(std::abs(page.objects[0].numbers.at(i) - corners[i]) < 1e-9);
}

void tst_Cvat::whatIsNotReadIsTold_data()
{
    QTest::addColumn<QByteArray>("element");
    QTest::addColumn<int>("left");
    QTest::newRow("mask") << QByteArray("<mask label=\"x\" rle=\"1, 2\" left=\"0\" top=\"0\"/>") << 0;
    QTest::newRow("tag") << QByteArray("<tag label=\"x\"/>") << 0;
    QTest::newRow("three corners of a polyline")
        << QByteArray("<polyline label=\"x\" points=\"1,2;3,4;5,6\"/>") << 0;
    QTest::newRow("two corners of a polygon") << QByteArray("<polygon label=\"x\" points=\"1,2;3,4\"/>") << 0;
    QTest::newRow("no corner") << QByteArray("<points label=\"x\" points=\"\"/>") << 0;
    QTest::newRow("no number") << QByteArray("<box label=\"x\" xtl=\"nan\" ytl=\"1\" xbr=\"2\" ybr=\"2\"/>")
                               << 0;
    QTest::newRow("no side") << QByteArray("<box label=\"x\" ytl=\"1\" xbr=\"2\" ybr=\"2\"/>") << 0;
    QTest::newRow("too far") << QByteArray("<points label=\"x\" points=\"1e10,2\"/>") << 0;
    QTest::newRow("attributes")
        << QByteArray("<points label=\"x\" points=\"1,2\"><attribute name=\"a\">b</attribute>"
                      "</points>")
        << 1;
}

void tst_Cvat::whatIsNotReadIsTold()
{
    QFETCH(QByteArray, element);
    QFETCH(int, left);
    Remarks remarks;
    const SDocument document = ReadBack(File(element.toStdString()), remarks);
    QCOMPARE(document.pages.at(0).objects.size(), static_cast<std::size_t>(left));
    QVERIFY(remarks.size() == 1 && IsTold(remarks, "x", {"left out"}));
}

void tst_Cvat::imagesAndPagesComeBack()
{
    SDocument before = DocumentOf({Make("point", {1, 2}, "a")});
    before.pages.push_back(before.pages[0]);
    before.pages[1].page = 1;
    before.pages.push_back(before.pages[0]);
    before.pages[2].image = "other.jpg";
    Remarks remarks;
    SDocument after = ReadBack(Written(before, remarks), remarks);
    QVERIFY(remarks.empty());
    QCOMPARE(after.pages.size(), std::size_t(3));
    QVERIFY(after.pages[1].page == 1 && after.pages[1].image.empty());
    QVERIFY(after.pages[2].page == 0 && after.pages[2].image == "other.jpg");
    before.pages[1].page = 5;
    Written(before, remarks);
    QVERIFY(IsTold(remarks, "", {"numbers of the pages"}));
}

void tst_Cvat::damagedFilesGiveNothingThatIsNotWellFormed()
{
    Remarks remarks;
    QVERIFY(
        ReadDamaged(&ReadCvat, Written(DocumentOf({Make("rectangle", {1, 2, 3, 4}), Make("circle", {5, 6, 7}),
                                                   Make("polygon", {1, 2, 3, 4, 5, 6})}),
                                       remarks)) > 0);
}

VANTOR_CORE_TEST_MAIN(tst_Cvat)
#include "tst_Cvat.moc"
