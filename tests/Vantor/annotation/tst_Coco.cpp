// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "ForeignTests.h"
#include "tests/support/TestMain.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace ForeignTests;
using Numbers = std::vector<double>;

namespace
{
std::string Written(const SDocument& document, Remarks& remarks)
{
    SContext context = Context();
    std::string bytes;
    return WriteCoco(document, context, bytes, remarks).IsSuccess() ? bytes : std::string();
}

QJsonObject RootOf(const std::string& bytes)
{
    return QJsonDocument::fromJson(QByteArray::fromStdString(bytes)).object();
}

QJsonArray ArrayOf(const QJsonObject& object, const char* pName)
{
    return object[QLatin1String(pName)].toArray();
}

/// A file about an image with these annotations.
std::string FileOf(const std::string& annotations)
{
    return R"({"info":{},"images":[{"id":7,"file_name":"in/photo.jpg","width":40,"height":30}],)"
           R"("categories":[{"id":3,"name":"cell"}],"annotations":[)" +
           annotations + "]}";
}
} // namespace

class tst_Coco : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatChangesIsTold();
    void aFileHasTheMembersThatItsReadersWant();
    void annotationsOfOtherProgramsAreRead();
    void anExactShapeCountsOnlyWhileItsOutlineIsTheSame();
    void severalImagesComeBackEachWithItsOwn();
    void pagesOfADocumentComeBackAsPages();
    void whatIsSkippedIsTold();
    void damagedFilesDoNoHarm();
};

void tst_Coco::whatChangesIsTold()
{
    QCOMPARE(UntoldOfRandomDocuments(WriteCoco, ReadCoco, 2000), QString());
}

void tst_Coco::aFileHasTheMembersThatItsReadersWant()
{
    Remarks remarks;
    const std::string bytes =
        Written(DocumentOf({Make("rectangle", {60, 70.25, -49.5, -50.25}),
                            Make("circle", {50, 60, 10}, "spot"), Make("ruler", {1, 2, 3, 4}),
                            Make("rectangle", {1, 2, 0, 3}), Make("polygon", {0, 0, 4, 0, 0, 4})}),
                remarks);
    const QJsonObject root = RootOf(bytes);
    QCOMPARE(ArrayOf(root, "images").size(), 1);
    QCOMPARE(ArrayOf(root, "images")[0].toObject(),
             QJsonObject({{QStringLiteral("id"), 1},
                          {QStringLiteral("file_name"), QStringLiteral("photo.jpg")},
                          {QStringLiteral("width"), 400},
                          {QStringLiteral("height"), 300}}));
    QCOMPARE(ArrayOf(root, "categories").size(), 2);
    QCOMPARE(ArrayOf(root, "categories")[1].toObject()[QStringLiteral("name")].toString(),
             QStringLiteral("spot"));
    const QJsonArray annotations = ArrayOf(root, "annotations");
    QCOMPARE(annotations.size(), 3);
    QCOMPARE(annotations[2].toObject(), // the topmost is painted last
             QJsonObject({{QStringLiteral("id"), 3},
                          {QStringLiteral("image_id"), 1},
                          {QStringLiteral("category_id"), 1},
                          {QStringLiteral("iscrowd"), 0},
                          {QStringLiteral("bbox"), QJsonArray({10.5, 20, 49.5, 50.25})},
                          {QStringLiteral("area"), 2487.375},
                          {QStringLiteral("segmentation"),
                           QJsonArray({QJsonArray({10.5, 20, 60, 20, 60, 70.25, 10.5, 70.25})})}}));
    const QJsonObject circle = annotations[1].toObject();
    QCOMPARE(circle[QStringLiteral("area")].toDouble(), 100.0 * std::acos(-1.0));
    QCOMPARE(circle[QStringLiteral("bbox")].toArray(), QJsonArray({40, 50, 20, 20}));
    QVERIFY(IsTold(remarks, "spot", {"becomes a polygon"}));
    QVERIFY(IsTold(remarks, "cell", {"left out: the format has no ruler"}));
    QVERIFY(IsTold(remarks, "cell", {"left out: it has no width"}));
}

void tst_Coco::annotationsOfOtherProgramsAreRead()
{
    SDocument document;
    Remarks remarks;
    const std::string bytes = FileOf(
        R"({"id":1,"image_id":7,"category_id":3,"bbox":[1,2,3,4],"segmentation":[],"area":12,"iscrowd":0},)"
        R"({"id":2,"image_id":7,"category_id":3,"segmentation":[[0,0,4,0,4,4],[9,9,12,9,12,12,9,12]],"iscrowd":0})");
    QCOMPARE(ReadCoco(bytes, Context(), document, remarks).GetReason(), std::string());
    QVERIFY(remarks.empty());
    QCOMPARE(document.source.name, std::string("in/photo.jpg"));
    QCOMPARE(document.pages[0].width, 40);
    const std::vector<SObject>& objects = document.pages[0].objects;
    QCOMPARE(objects.size(), std::size_t(3));
    QCOMPARE(objects[2].kind, std::string("rectangle"));
    QCOMPARE(objects[2].numbers, (Numbers{1, 2, 3, 4}));
    QCOMPARE(objects[1].kind, std::string("polygon"));
    QCOMPARE(objects[0].kind, std::string("rectangle"));
    QCOMPARE(objects[0].numbers, (Numbers{9, 9, 3, 3}));
    for (const SObject& object : objects)
        QCOMPARE(object.name, std::string("cell"));
}

void tst_Coco::anExactShapeCountsOnlyWhileItsOutlineIsTheSame()
{
    Remarks remarks;
    const std::string bytes = Written(DocumentOf({Make("circle", {5, 4, 4})}), remarks);
    SDocument document;
    QVERIFY(ReadCoco(bytes, Context(), document, remarks).IsSuccess());
    QCOMPARE(document.pages[0].objects[0].kind, std::string("circle"));
    QCOMPARE(document.pages[0].objects[0].numbers, (Numbers{5, 4, 4}));
    std::string moved = bytes;
    moved.replace(moved.find("[[9,4,"), 6, "[[9,5,");
    document = SDocument();
    QVERIFY(ReadCoco(moved, Context(), document, remarks).IsSuccess());
    QCOMPARE(document.pages[0].objects[0].kind, std::string("polygon"));
}

void tst_Coco::severalImagesComeBackEachWithItsOwn()
{
    SDocument document = DocumentOf({Make("rectangle", {1, 2, 3, 4})});
    document.pages.push_back(document.pages[0]);
    document.pages[1].image = "b.jpg";
    document.pages[1].objects[0].name = "other";
    Remarks remarks;
    SDocument read;
    QVERIFY(ReadCoco(Written(document, remarks), Context(), read, remarks).IsSuccess());
    QVERIFY(remarks.empty());
    QCOMPARE(read.pages.size(), std::size_t(2));
    QCOMPARE(read.pages[0].image, std::string("photo.jpg"));
    QCOMPARE(read.pages[1].image, std::string("b.jpg"));
    QCOMPARE(read.pages[0].objects.at(0).name, std::string("cell"));
    QCOMPARE(read.pages[1].objects.at(0).name, std::string("other"));
}

void tst_Coco::pagesOfADocumentComeBackAsPages()
{
    SDocument document = DocumentOf({Make("rectangle", {1, 2, 3, 4})});
    document.pages.push_back(document.pages[0]);
    document.pages[1].page = 4;
    Remarks remarks;
    SDocument read;
    QVERIFY(ReadCoco(Written(document, remarks), Context(), read, remarks).IsSuccess());
    QCOMPARE(read.source.name, std::string("photo.jpg"));
    QCOMPARE(read.pages.size(), std::size_t(2));
    QCOMPARE(read.pages[0].page, 0);
    QCOMPARE(read.pages[1].page, 4);
    QVERIFY(read.pages[0].image.empty() && read.pages[1].image.empty());
}

void tst_Coco::whatIsSkippedIsTold()
{
    SDocument document;
    Remarks remarks;
    const std::string bytes =
        FileOf(R"({"image_id":7,"category_id":3,"segmentation":{"counts":[1],"size":[1,1]},"iscrowd":1},)"
               R"({"image_id":8,"category_id":3,"bbox":[1,2,3,4]},)"
               R"({"image_id":7,"category_id":3,"bbox":[1,2,-3,4]},)"
               R"({"image_id":7,"category_id":3,"segmentation":[[1,2,3,4]]},)"
               R"({"image_id":7,"category_id":3,"bbox":[1,2,3,4],"keypoints":[1,2,2],"score":0.5})");
    QCOMPARE(ReadCoco(bytes, Context(), document, remarks).GetReason(), std::string());
    QCOMPARE(document.pages[0].objects.size(), std::size_t(1));
    QCOMPARE(remarks.size(), std::size_t(5));
    QVERIFY(IsTold(remarks, "cell", {"It is left out: it is a mask."}));
    QVERIFY(IsTold(remarks, "annotation 1", {"It is left out: its image is not in the file."}));
    QVERIFY(IsTold(remarks, "cell", {"It is left out: it has neither corners nor a box."}));
    QVERIFY(IsTold(remarks, "cell", {"It is read without: keypoints, score."}));
    QVERIFY(!ReadCoco("{}", Context(), document, remarks).IsSuccess());
}

void tst_Coco::damagedFilesDoNoHarm()
{
    Remarks remarks;
    QVERIFY(ReadDamaged(ReadCoco, FileOf(R"({"id":1,"image_id":7,"category_id":3,"bbox":[1,2,3,4],)"
                                         R"("segmentation":[[1,2,4,2,4,6,1,6]]})")) > 100);
}

VANTOR_CORE_TEST_MAIN(tst_Coco)
#include "tst_Coco.moc"
