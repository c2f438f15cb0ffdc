// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/Vantor/annotation/ForeignTests.h"
#include "tests/support/TestMain.h"

using namespace ForeignTests;

namespace
{
std::string Written(const SDocument& document, Remarks& remarks, int nFirstPixel = 1)
{
    SContext context = Context();
    context.firstPixel = nFirstPixel;
    std::string bytes;
    return WriteVoc(document, context, bytes, remarks).IsSuccess() ? bytes : std::string();
}

SPage ReadBack(const std::string& bytes, Remarks& remarks, int nFirstPixel = 1)
{
    SContext context = Context();
    context.firstPixel = nFirstPixel;
    SDocument document;
    const auto result = ReadVoc(bytes, context, document, remarks);
    if (!result.IsSuccess())
        remarks.push_back({"failure", result.GetReason()});
    return document.pages.empty() ? SPage() : document.pages[0];
}

std::string File(const std::string& object)
{
    return "<annotation><filename>a.jpg</filename><size><width>40</width><height>30</height><depth>3</"
           "depth></size>"
           "<object>" +
           object + "</object></annotation>";
}

/// The four numbers of the first box, as they stand in the file.
std::string BoxIn(const std::string& bytes)
{
    std::string box;
    for (const std::string side : {"xmin", "ymin", "xmax", "ymax"}) {
        const std::size_t nAt = bytes.find('<' + side + '>') + side.size() + 2;
        box += bytes.substr(nAt, bytes.find('<', nAt) - nAt) + ' ';
    }
    return box;
}
} // namespace

class tst_Voc : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void boxesAreWholePixelsFromOne_data();
    void boxesAreWholePixelsFromOne();
    void whatCoversNothingOfTheImageIsLeftOut();
    void everyLossOfRandomDocumentsIsTold();
    void anotherProgramsFileIsRead();
    void whatIsNotReadIsTold_data();
    void whatIsNotReadIsTold();
    void damagedFilesGiveNothingThatIsNotWellFormed();
};

void tst_Voc::boxesAreWholePixelsFromOne_data()
{
    QTest::addColumn<QVector<double>>("numbers");
    QTest::addColumn<QByteArray>("fromOne");
    QTest::addColumn<QByteArray>("fromZero");
    QTest::addColumn<bool>("truncated");
    using Numbers = QVector<double>;
    QTest::newRow("part of pixels") << Numbers{10.5, 20, 49.5, 50.25} << QByteArray("11 21 60 71 ")
                                    << QByteArray("10 20 60 71 ") << false;
    QTest::newRow("drawn backwards") << Numbers{60, 70.25, -49.5, -50.25} << QByteArray("11 21 60 71 ")
                                     << QByteArray("10 20 60 71 ") << false;
    QTest::newRow("the whole image") << Numbers{0, 0, 400, 300} << QByteArray("1 1 400 300 ")
                                     << QByteArray("0 0 400 300 ") << false;
    QTest::newRow("one pixel") << Numbers{7, 8, 1, 1} << QByteArray("8 9 8 9 ") << QByteArray("7 8 8 9 ")
                               << false;
    QTest::newRow("beyond the image")
        << Numbers{-5, 290, 20, 50} << QByteArray("1 291 15 300 ") << QByteArray("0 290 15 300 ") << true;
}

void tst_Voc::boxesAreWholePixelsFromOne()
{
    QFETCH(QVector<double>, numbers);
    QFETCH(QByteArray, fromOne);
    QFETCH(QByteArray, fromZero);
    QFETCH(bool, truncated);
    const SDocument document = DocumentOf({Make("rectangle", {numbers.begin(), numbers.end()})});
    Remarks remarks;
    const std::string bytes = Written(document, remarks);
    QCOMPARE(QByteArray::fromStdString(BoxIn(bytes)), fromOne);
    QCOMPARE(bytes.find("<truncated>1<") != std::string::npos, truncated);
    QCOMPARE(IsTold(remarks, "cell", {"clipped"}), truncated);
    const std::string zero = Written(document, remarks, 0);
    QCOMPARE(QByteArray::fromStdString(BoxIn(zero)), fromZero);
    QVERIFY(ReadBack(bytes, remarks).objects.at(0).numbers ==
            ReadBack(zero, remarks, 0).objects.at(0).numbers);
}

void tst_Voc::whatCoversNothingOfTheImageIsLeftOut()
{
    for (const std::vector<double>& numbers : {std::vector<double>{-20, 5, 10, 10},
                                               {400, 5, 10, 10},
                                               {5, 300, 1, 1},
                                               {5, 5, 0, 10},
                                               {5, 5, 10, 0}}) {
        Remarks remarks;
        const std::string bytes = Written(DocumentOf({Make("rectangle", numbers)}), remarks);
        QVERIFY(!bytes.empty() && bytes.find("<object>") == std::string::npos);
        QVERIFY(IsTold(remarks, "cell", {"left out"}));
    }
}

void tst_Voc::everyLossOfRandomDocumentsIsTold()
{
    QCOMPARE(UntoldOfRandomDocuments(&WriteVoc, &ReadVoc, 1000), QString());
}

void tst_Voc::anotherProgramsFileIsRead()
{
    SDocument document;
    Remarks remarks;
    const std::string object = "<name>cell</name><pose>Unspecified</pose><truncated>0</truncated>"
                               "<difficult>0</difficult><bndbox><xmin>11</xmin><ymin>21.0</ymin>"
                               "<xmax>60</xmax><ymax>71</ymax></bndbox>";
    QVERIFY(ReadVoc(File(object), Context(), document, remarks).IsSuccess());
    QVERIFY(remarks.empty());
    QCOMPARE(document.source.name, std::string("a.jpg"));
    QVERIFY(document.pages[0].width == 40 && document.pages[0].height == 30);
    QCOMPARE(document.pages[0].objects.at(0).name, std::string("cell"));
    QCOMPARE(document.pages[0].objects[0].numbers, (std::vector<double>{10, 20, 50, 51}));
}

void tst_Voc::whatIsNotReadIsTold_data()
{
    QTest::addColumn<QByteArray>("object");
    QTest::addColumn<int>("left");
    const QByteArray box = "<bndbox><xmin>1</xmin><ymin>2</ymin><xmax>3</xmax><ymax>4</ymax></bndbox>";
    QTest::newRow("no box") << QByteArray("<name>x</name>") << 0;
    QTest::newRow("no side") << "<name>x</name>" + QByteArray(box).replace("ymin", "y") << 0;
    QTest::newRow("turned inside out") << "<name>x</name>" + QByteArray(box).replace("3", "-3") << 0;
    QTest::newRow("no number") << "<name>x</name>" + QByteArray(box).replace("3", "inf") << 0;
    QTest::newRow("parts") << "<name>x</name>" + box + "<part><name>head</name></part>" << 1;
}

void tst_Voc::whatIsNotReadIsTold()
{
    QFETCH(QByteArray, object);
    QFETCH(int, left);
    Remarks remarks;
    QCOMPARE(ReadBack(File(object.toStdString()), remarks).objects.size(), static_cast<std::size_t>(left));
    QCOMPARE(remarks.size(), std::size_t(1));
    QVERIFY(IsTold(remarks, "x", {"left out", "Left out"}));
}

void tst_Voc::damagedFilesGiveNothingThatIsNotWellFormed()
{
    Remarks remarks;
    QVERIFY(ReadDamaged(&ReadVoc, Written(DocumentOf({Make("rectangle", {1, 2, 3, 4})}), remarks)) > 0);
}

VANTOR_CORE_TEST_MAIN(tst_Voc)
#include "tst_Voc.moc"
