// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "ForeignTests.h"
#include "tests/support/TestMain.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace ForeignTests;
using Numbers = std::vector<double>;

Q_DECLARE_METATYPE(std::vector<double>)

namespace
{
std::string Written(const SDocument& document)
{
    SContext context = Context();
    std::string bytes;
    Remarks remarks;
    return WriteLabelMe(document, context, bytes, remarks).IsSuccess() ? bytes : std::string();
}

/// A file with these shapes.
std::string FileOf(const std::string& shapes)
{
    return R"({"version":"5.5.0","flags":{},"shapes":[)" + shapes +
           "],\"imagePath\":\"..\\\\in\\\\photo.jpg\",\"imageData\":null,\"imageHeight\":30,\"imageWidth\":"
           "40}";
}

/// A shape of the kind with these points and further members.
std::string Shape(const std::string& type, const std::string& points, const std::string& more = std::string())
{
    return "{\"label\":\"cell\",\"points\":" + points + ",\"shape_type\":\"" + type + "\"" + more + "}";
}

struct SRead {
    SDocument document;
    Remarks remarks;
    std::string failure;
    const std::vector<SObject>& Objects() const { return document.pages.at(0).objects; }
};

SRead ReadShapes(const std::string& shapes)
{
    SRead read;
    read.failure = ReadLabelMe(FileOf(shapes), Context(), read.document, read.remarks).GetReason();
    return read;
}
} // namespace

class tst_LabelMe : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatChangesIsTold();
    void aFileHasTheMembersThatItsProgramWants();
    void shapesOfTheProgramAreRead_data();
    void shapesOfTheProgramAreRead();
    void anExactShapeCountsOnlyWhileItsPointsAreTheSame();
    void whatIsSkippedIsTold();
    void theImageIsTheLastPartOfThePath();
    void damagedFilesDoNoHarm();
};

void tst_LabelMe::whatChangesIsTold()
{
    QCOMPARE(UntoldOfRandomDocuments(WriteLabelMe, ReadLabelMe, 2000), QString());
}

void tst_LabelMe::aFileHasTheMembersThatItsProgramWants()
{
    SObject text = Make("text", {5, 6, 12}, "note");
    text.text = "two\nlines";
    const SDocument document =
        DocumentOf({Make("rectangle", {10.5, 20, -3, 4}), Make("ellipse", {0, 0, 40, 20}, "\xc3\xa4"), text});
    const std::string bytes = Written(document);
    QVERIFY(bytes.find("\xc3\xa4") != std::string::npos); // not as an escape
    const QJsonObject root = QJsonDocument::fromJson(QByteArray::fromStdString(bytes)).object();
    QCOMPARE(root[QStringLiteral("version")].toString(), QStringLiteral("5.5.0"));
    QCOMPARE(root[QStringLiteral("imagePath")].toString(), QStringLiteral("photo.jpg"));
    QCOMPARE(root[QStringLiteral("imageWidth")].toInt(), 400);
    QCOMPARE(root[QStringLiteral("imageHeight")].toInt(), 300);
    QVERIFY(root[QStringLiteral("imageData")].isNull() && root.contains(QStringLiteral("imageData")));
    QVERIFY(root[QStringLiteral("flags")].isObject());
    const QJsonArray shapes = root[QStringLiteral("shapes")].toArray();
    QCOMPARE(shapes.size(), 3);
    const QJsonObject top = shapes[2].toObject(); // painted last
    QCOMPARE(top[QStringLiteral("label")].toString(), QStringLiteral("cell"));
    QCOMPARE(top[QStringLiteral("shape_type")].toString(), QStringLiteral("rectangle"));
    QCOMPARE(top[QStringLiteral("points")].toArray(),
             QJsonArray({QJsonArray({7.5, 20.0}), QJsonArray({10.5, 24.0})}));
    QVERIFY(top[QStringLiteral("group_id")].isNull() && top[QStringLiteral("flags")].isObject());
    QVERIFY(!top.contains(QStringLiteral("vantor_shape")));
    const QJsonObject ellipse = shapes[1].toObject();
    QCOMPARE(ellipse[QStringLiteral("shape_type")].toString(), QStringLiteral("polygon"));
    QCOMPARE(ellipse[QStringLiteral("points")].toArray().size(), 48);
    QVERIFY(ellipse[QStringLiteral("vantor_shape")].isObject());
    QCOMPARE(shapes[0].toObject()[QStringLiteral("description")].toString(), QStringLiteral("two\nlines"));
}

void tst_LabelMe::shapesOfTheProgramAreRead_data()
{
    QTest::addColumn<QString>("shape");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<Numbers>("numbers");
    const auto row = [](const char* pName, const std::string& shape, const char* pKind,
                        const Numbers& numbers) {
        QTest::newRow(pName) << QString::fromStdString(shape) << QString::fromLatin1(pKind) << numbers;
    };
    row("rectangle", Shape("rectangle", "[[60,20],[10.5,70.25]]"), "rectangle", {10.5, 20, 49.5, 50.25});
    row("rectangle of four", Shape("rectangle", "[[1,2],[4,2],[4,8],[1,8]]"), "rectangle", {1, 2, 3, 6});
    row("turned rectangle", Shape("rotation", "[[1,2],[4,3],[4,8],[1,8]]"), "polygon",
        {1, 2, 4, 3, 4, 8, 1, 8});
    row("circle", Shape("circle", "[[10,20],[13,24]]"), "circle", {10, 20, 5});
    row("polygon", Shape("polygon", "[[1,2],[4,2],[4,8]]"), "polygon", {1, 2, 4, 2, 4, 8});
    row("line", Shape("line", "[[1,2],[4,2]]"), "line", {1, 2, 4, 2});
    row("strip of two", Shape("linestrip", "[[1,2],[4,2]]"), "line", {1, 2, 4, 2});
    row("point", Shape("point", "[[1,2]]"), "point", {1, 2});
    row("without a kind", R"({"label":"cell","points":[[1,2],[4,2],[4,8]]})", "polygon", {1, 2, 4, 2, 4, 8});
}

void tst_LabelMe::shapesOfTheProgramAreRead()
{
    QFETCH(QString, shape);
    QFETCH(QString, kind);
    QFETCH(Numbers, numbers);
    const SRead read = ReadShapes(shape.toStdString());
    QCOMPARE(read.failure, std::string());
    QVERIFY(read.remarks.empty());
    QCOMPARE(read.Objects().size(), std::size_t(1));
    QCOMPARE(QString::fromStdString(read.Objects()[0].kind), kind);
    QCOMPARE(read.Objects()[0].numbers, numbers);
    QCOMPARE(read.Objects()[0].name, std::string("cell"));
    QVERIFY(read.Objects()[0].named);
}

void tst_LabelMe::anExactShapeCountsOnlyWhileItsPointsAreTheSame()
{
    const SObject ellipse = Make("ellipse", {1, 2, 8, 4});
    const std::string bytes = Written(DocumentOf({ellipse}));
    SDocument document;
    Remarks remarks;
    QVERIFY(ReadLabelMe(bytes, Context(), document, remarks).IsSuccess());
    QCOMPARE(document.pages[0].objects[0].kind, std::string("ellipse"));
    QCOMPARE(document.pages[0].objects[0].numbers, ellipse.numbers);
    std::string moved = bytes;
    moved.replace(moved.find("[9,4]"), 5, "[9,5]"); // the rightmost corner
    document = SDocument();
    QVERIFY(ReadLabelMe(moved, Context(), document, remarks).IsSuccess());
    QCOMPARE(document.pages[0].objects[0].kind, std::string("polygon"));
    QCOMPARE(document.pages[0].objects[0].numbers[1], 5.0);
}

void tst_LabelMe::whatIsSkippedIsTold()
{
    const SRead read = ReadShapes(
        Shape("cuboid", "[[1,2]]") + ',' + Shape("mask", "[[1,2],[3,4]]") + ',' + Shape("line", "[[1,2]]") +
        ',' + Shape("polygon", "[[1,2],[3,4],[5,\"6\"]]") + ',' + Shape("linestrip", "[[1,2],[3,4],[5,6]]") +
        ",7," +
        Shape("points", "[[1,2],[3,4]]",
              R"(,"group_id":3,"description":"dark","flags":{"a":true},"mask":null,"checked":false)"));
    QCOMPARE(read.failure, std::string());
    QCOMPARE(read.Objects().size(), std::size_t(2));
    QCOMPARE(read.Objects()[0].numbers, (Numbers{3, 4}));
    QCOMPARE(read.remarks.size(), std::size_t(8));
    QCOMPARE(read.remarks[0].text, std::string("It is left out: a shape of this kind is not known: cuboid."));
    for (std::size_t i = 0; i < 6; ++i)
        QVERIFY2(read.remarks[i].text.find("It is left out") == 0, read.remarks[i].text.c_str());
    QCOMPARE(read.remarks[6].text, std::string("It is read without: group_id, flags."));
    QCOMPARE(read.remarks[7].text, std::string("It is read without: description."));
}

void tst_LabelMe::theImageIsTheLastPartOfThePath()
{
    const SRead read = ReadShapes("");
    QCOMPARE(read.document.source.name, std::string("photo.jpg"));
    QCOMPARE(read.document.pages[0].width, 40);
    QCOMPARE(read.document.pages[0].height, 30);
    SRead bare;
    QVERIFY(ReadLabelMe(R"({"shapes":[]})", Context(), bare.document, bare.remarks).IsSuccess());
    QCOMPARE(bare.document.source.name, std::string("photo.jpg"));
    QCOMPARE(bare.document.pages[0].width, 400);
    QVERIFY(!ReadLabelMe(R"({"shapes":{}})", Context(), bare.document, bare.remarks).IsSuccess());
}

void tst_LabelMe::damagedFilesDoNoHarm()
{
    const std::string bytes =
        FileOf(Shape("rectangle", "[[1,2],[4,2]]") +
               R"(,{"label":"\u00e4","points":[[1,2]],"shape_type":"point","vantor_shape":{"kind":"text",)"
               R"("numbers":[1,2,3],"text":"x"}})");
    QVERIFY(ReadDamaged(ReadLabelMe, bytes) > 100);
}

VANTOR_CORE_TEST_MAIN(tst_LabelMe)
#include "tst_LabelMe.moc"
