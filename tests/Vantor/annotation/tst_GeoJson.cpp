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
constexpr const char* kId = "0f8fad5b-d9cb-469f-a165-70867728950e";

std::string Written(const SDocument& document)
{
    SContext context = Context();
    std::string bytes;
    Remarks remarks;
    return WriteGeoJson(document, context, bytes, remarks).IsSuccess() ? bytes : std::string();
}

QJsonObject Member(const QJsonObject& object, const char* pName)
{
    return object[QLatin1String(pName)].toObject();
}

/// A feature with that geometry and these properties.
std::string Feature(const std::string& geometry, const std::string& properties = R"({"name":"cell"})")
{
    return R"({"type":"Feature","id":")" + std::string(kId) + R"(","geometry":)" + geometry +
           R"(,"properties":)" + properties + '}';
}

std::string Collection(const std::string& features)
{
    return R"({"type":"FeatureCollection","features":[)" + features + "]}";
}
} // namespace

Q_DECLARE_METATYPE(std::vector<double>)

class tst_GeoJson : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatChangesIsTold();
    void aFileHasTheMembersThatItsProgramWants();
    void featuresOfTheProgramAreRead_data();
    void featuresOfTheProgramAreRead();
    void aClassStandsForAMissingName();
    void identitiesAreKeptOnce();
    void anEllipseOfTheProgramFillsTheBoundsOfItsRing();
    void whatIsSkippedIsTold();
    void damagedFilesDoNoHarm();
};

void tst_GeoJson::whatChangesIsTold()
{
    QCOMPARE(UntoldOfRandomDocuments(WriteGeoJson, ReadGeoJson, 2000), QString());
}

void tst_GeoJson::aFileHasTheMembersThatItsProgramWants()
{
    SObject box = Make("rectangle", {10.5, 20, 49.5, 50.25});
    box.id = kId;
    box.locked = true;
    box.style.penColor = 0xff102030U;
    const std::string bytes = Written(DocumentOf({box, Make("ellipse", {0.5, 1, 40, 20})}));
    const QJsonObject root = QJsonDocument::fromJson(QByteArray::fromStdString(bytes)).object();
    QCOMPARE(root[QStringLiteral("type")].toString(), QStringLiteral("FeatureCollection"));
    const QJsonArray features = root[QStringLiteral("features")].toArray();
    QCOMPARE(features.size(), 2);
    const QJsonArray ring{QJsonArray({10.5, 20}), QJsonArray({60, 20}), QJsonArray({60, 70.25}),
                          QJsonArray({10.5, 70.25}), QJsonArray({10.5, 20})};
    QCOMPARE(features[1].toObject(),
             QJsonObject({{QStringLiteral("type"), QStringLiteral("Feature")},
                          {QStringLiteral("id"), QString::fromLatin1(kId)},
                          {QStringLiteral("geometry"),
                           QJsonObject({{QStringLiteral("type"), QStringLiteral("Polygon")},
                                        {QStringLiteral("coordinates"), QJsonArray({ring})}})},
                          {QStringLiteral("properties"),
                           QJsonObject({{QStringLiteral("objectType"), QStringLiteral("annotation")},
                                        {QStringLiteral("name"), QStringLiteral("cell")},
                                        {QStringLiteral("color"), QJsonArray({0x10, 0x20, 0x30})},
                                        {QStringLiteral("isLocked"), true}})}}));
    const QJsonObject ellipse = features[0].toObject();
    QCOMPARE(Member(ellipse, "geometry")[QStringLiteral("isEllipse")].toBool(), true);
    const QJsonArray rim = Member(ellipse, "geometry")[QStringLiteral("coordinates")].toArray()[0].toArray();
    QCOMPARE(rim.first(), rim.last());
    for (const QJsonArray& extreme :
         {QJsonArray({40.5, 11}), QJsonArray({20.5, 21}), QJsonArray({0.5, 11}), QJsonArray({20.5, 1})})
        QVERIFY(rim.contains(extreme));
}

void tst_GeoJson::featuresOfTheProgramAreRead_data()
{
    QTest::addColumn<QString>("geometry");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<Numbers>("numbers");
    const auto row = [](const char* pName, const char* pGeometry, const char* pKind, const Numbers& numbers) {
        QTest::newRow(pName) << QString::fromLatin1(pGeometry) << QString::fromLatin1(pKind) << numbers;
    };
    row("rectangle", R"({"type":"Polygon","coordinates":[[[10.5,20],[60,20],[60,70],[10.5,70],[10.5,20]]]})",
        "rectangle", {10.5, 20, 49.5, 50});
    row("polygon", R"({"type":"Polygon","coordinates":[[[1,2],[4,2],[4,8],[1,2]]]})", "polygon",
        {1, 2, 4, 2, 4, 8});
    row("line", R"({"type":"LineString","coordinates":[[1,2],[4,2]],"plane":{"c":-1,"z":0,"t":0}})", "line",
        {1, 2, 4, 2});
    row("point", R"({"type":"Point","coordinates":[1,2]})", "point", {1, 2});
}

void tst_GeoJson::featuresOfTheProgramAreRead()
{
    QFETCH(QString, geometry);
    QFETCH(QString, kind);
    QFETCH(Numbers, numbers);
    const std::string feature = Feature(
        geometry.toStdString(), R"({"name":"cell","color":[1,2,255],"isLocked":true,"measurements":{}})");
    for (const std::string& bytes : {Collection(feature), '[' + feature + ']', feature}) {
        QVERIFY(IsGeoJson(bytes, ""));
        SDocument document;
        Remarks remarks;
        QCOMPARE(ReadGeoJson(bytes, Context(), document, remarks).GetReason(), std::string());
        QVERIFY(remarks.empty());
        QCOMPARE(document.pages.at(0).width, 400);
        const SObject& object = document.pages[0].objects.at(0);
        QCOMPARE(QString::fromStdString(object.kind), kind);
        QCOMPARE(object.numbers, numbers);
        QCOMPARE(object.id, std::string(kId));
        QVERIFY(object.locked);
        QCOMPARE(object.style.penColor.value_or(0), 0xff0102ffU);
    }
}

void tst_GeoJson::aClassStandsForAMissingName()
{
    const std::string point = R"({"type":"Point","coordinates":[1,2]})";
    SDocument document;
    Remarks remarks;
    QVERIFY(ReadGeoJson(Collection(Feature(point, R"({"classification":{"name":"tumour"}})") + ',' +
                                   Feature(point, R"({"name":"a","classification":{"name":"tumour"}})")),
                        Context(), document, remarks)
                .IsSuccess());
    QCOMPARE(document.pages[0].objects[1].name, std::string("tumour"));
    QCOMPARE(document.pages[0].objects[0].name, std::string("a"));
    QCOMPARE(remarks.size(), std::size_t(1));
    QVERIFY(IsTold(remarks, "a", {"its class, tumour."}));
}

void tst_GeoJson::identitiesAreKeptOnce()
{
    const std::string point = R"({"type":"MultiPoint","coordinates":[[1,2],[3,4]]})";
    SDocument document;
    Remarks remarks;
    QVERIFY(ReadGeoJson(Collection(Feature(point) + ',' + Feature(point)), Context(), document, remarks)
                .IsSuccess());
    const std::vector<SObject>& objects = document.pages[0].objects;
    QCOMPARE(objects.size(), std::size_t(4));
    QCOMPARE(std::count_if(objects.begin(), objects.end(), [](const SObject& o) { return o.id == kId; }), 1);
    QCOMPARE(objects[3].id, std::string(kId));
}

void tst_GeoJson::anEllipseOfTheProgramFillsTheBoundsOfItsRing()
{
    SDocument document;
    Remarks remarks;
    const std::string ring = R"("coordinates":[[[10,5],[5,8],[0,5],[5,2],[10,5]]])";
    QVERIFY(ReadGeoJson(Feature(R"({"type":"Polygon",)" + ring + R"(,"isEllipse":true})"), Context(),
                        document, remarks)
                .IsSuccess());
    QCOMPARE(document.pages[0].objects[0].kind, std::string("ellipse"));
    QCOMPARE(document.pages[0].objects[0].numbers, (Numbers{0, 2, 10, 6}));
    // Our own is exact, until somebody moves a corner.
    const std::string bytes = Written(DocumentOf({Make("circle", {5, 4, 4})}));
    document = SDocument();
    QVERIFY(ReadGeoJson(bytes, Context(), document, remarks).IsSuccess());
    QCOMPARE(document.pages[0].objects[0].kind, std::string("circle"));
    std::string moved = bytes;
    moved.replace(moved.find("[5,8]"), 5, "[5,9]");
    document = SDocument();
    QVERIFY(ReadGeoJson(moved, Context(), document, remarks).IsSuccess());
    QCOMPARE(document.pages[0].objects[0].kind, std::string("ellipse"));
    QCOMPARE(document.pages[0].objects[0].numbers, (Numbers{1, 0, 8, 9}));
}

void tst_GeoJson::whatIsSkippedIsTold()
{
    SDocument document;
    Remarks remarks;
    const std::string hole = R"({"type":"Polygon","coordinates":[[[0,0],[9,0],[9,9]],[[1,1],[2,1],[2,2]]]})";
    const std::string bytes = Collection(
        Feature(hole) + ',' + Feature(R"({"type":"GeometryCollection"})") + ',' +
        Feature(R"({"type":"LineString","coordinates":[[1,2],[3,4],[5,6]]})") + ',' +
        Feature(R"({"type":"Polygon","coordinates":[]})") + ',' +
        Feature(R"({"type":"Point","coordinates":[1]})") + ",null," +
        Feature(R"({"type":"Point","coordinates":[1,2]})", R"({"name":"b","measurements":{"a":1}})"));
    QCOMPARE(ReadGeoJson(bytes, Context(), document, remarks).GetReason(), std::string());
    QCOMPARE(document.pages[0].objects.size(), std::size_t(2));
    QCOMPARE(remarks.size(), std::size_t(7));
    QVERIFY(IsTold(remarks, "cell", {"without its holes"}));
    QVERIFY(IsTold(remarks, "cell", {"not known: GeometryCollection"}));
    QVERIFY(IsTold(remarks, "b", {"It is read without: measurements."}));
    QVERIFY(!ReadGeoJson(R"({"type":"Topology"})", Context(), document, remarks).IsSuccess());
}

void tst_GeoJson::damagedFilesDoNoHarm()
{
    QVERIFY(ReadDamaged(ReadGeoJson,
                        Feature(R"({"type":"Polygon","coordinates":[[[1,2],[4,2],[4,8],[1,2]]]})")) > 100);
}

VANTOR_CORE_TEST_MAIN(tst_GeoJson)
#include "tst_GeoJson.moc"
