// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestMain.h"

#include <VantorCommon/view3d/CImageView3D.h>
#include <VantorCommon/view3d/CImageView3DEarth.h>

#include <QApplication>
#include <QImage>
#include <QMatrix4x4>
#include <QMouseEvent>
#include <QOpenGLBuffer>
#include <QOpenGLFramebufferObject>
#include <QOpenGLShaderProgram>
#include <QOpenGLTexture>
#include <QOpenGLVertexArrayObject>
#include <QTimer>
#include <QVector>
#include <QtMath>
#include <cmath>
#include <cstddef>

namespace
{
constexpr int kSide = 360;

void Send(QWidget& view, QEvent::Type eType, const QPointF& pos)
{
    QMouseEvent event(eType, pos, view.mapToGlobal(pos.toPoint()), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(&view, &event);
}

void Drag(QWidget& view, int dx, int dy)
{
    const QPointF from(100, 100);
    Send(view, QEvent::MouseButtonPress, from);
    Send(view, QEvent::MouseMove, from + QPointF(dx, dy));
    Send(view, QEvent::MouseButtonRelease, from + QPointF(dx, dy));
}

bool Show(CImageView3DEarth& view)
{
    view.resize(kSide, kSide);
    view.show();
    return QTest::qWaitForWindowExposed(&view) && QTest::qWaitFor([&] { return view.isValid(); });
}

/// Where a place on the globe lies in space, degrees.
QVector3D PointAt(double dblLongitude, double dblLatitude)
{
    const double lon = qDegreesToRadians(dblLongitude);
    const double lat = qDegreesToRadians(dblLatitude);
    return QVector3D(float(std::cos(lat) * std::cos(lon)), float(std::cos(lat) * std::sin(lon)),
                     float(std::sin(lat)));
}

/// The colour of a place in the texture.
QColor TextureAt(const QImage& texture, double dblLongitude, double dblLatitude)
{
    return texture.pixelColor(int((dblLongitude + 180) / 360 * texture.width()),
                              int((90 - dblLatitude) / 180 * texture.height()));
}

/// Where a place on the globe appears in a square picture.
QPointF PlaceOf(const QMatrix4x4& matrix, double dblLongitude, double dblLatitude)
{
    const QVector3D clip = matrix.map(PointAt(dblLongitude, dblLatitude));
    return QPointF((clip.x() + 1) / 2 * kSide, (1 - clip.y()) / 2 * kSide);
}

/// Counts the places of the globe whose colour in a picture is that of the texture around them.
struct SComparison {
    const QImage& picture;
    const QMatrix4x4& matrix;
    int nCompared; ///< places inside the picture
    int nEqual;

    void Add(double dblLongitude, double dblLatitude)
    {
        static const QImage texture(QStringLiteral(":/OpenGL/8081_earthmap4k.jpg"));
        const QPoint at = PlaceOf(matrix, dblLongitude, dblLatitude).toPoint();
        if (!picture.rect().contains(at))
            return;
        ++nCompared;
        const QColor seen = picture.pixelColor(at);
        // The globe is much smaller than the texture: compare with the mean around the place.
        const int nX = int(std::fmod(dblLongitude + 540, 360.0) / 360 * texture.width());
        const int nY = int((90 - dblLatitude) / 180 * texture.height());
        const QColor mean = texture.copy(nX - 20, nY - 10, 40, 20)
                                .scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                                .pixelColor(0, 0);
        nEqual += std::abs(seen.red() - mean.red()) < 45 && std::abs(seen.green() - mean.green()) < 45 &&
                  std::abs(seen.blue() - mean.blue()) < 45;
    }
};

/// Paints the sphere with the view's own shaders and picture, into a buffer of the context that is current.
QImage PaintGlobe(const QMatrix4x4& matrix)
{
    std::vector<_SVertex> vertices;
    std::vector<unsigned int> indices;
    __InternalCreateEarth(vertices, indices, 1.0F, 360, 180);
    const std::unique_ptr<QOpenGLShaderProgram> pProgram(__InternalCreateProgram(
        QStringLiteral(":/OpenGL/earth_vertex.vert"), QStringLiteral(":/OpenGL/earth_frag.frag")));
    QOpenGLTexture texture(QImage(QStringLiteral(":/OpenGL/8081_earthmap4k.jpg")));
    QOpenGLFramebufferObject target(kSide, kSide, QOpenGLFramebufferObject::Depth);
    QOpenGLFunctions* p = QOpenGLContext::currentContext()->functions();
    target.bind();
    p->glViewport(0, 0, kSide, kSide);
    p->glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    p->glEnable(GL_DEPTH_TEST);
    QOpenGLVertexArrayObject array;
    array.create();
    const QOpenGLVertexArrayObject::Binder binder(&array);
    QOpenGLBuffer buffer(QOpenGLBuffer::VertexBuffer);
    buffer.create();
    buffer.bind();
    buffer.allocate(vertices.data(), int(vertices.size() * sizeof(_SVertex)));
    QOpenGLBuffer indexBuffer(QOpenGLBuffer::IndexBuffer);
    indexBuffer.create();
    indexBuffer.bind();
    indexBuffer.allocate(indices.data(), int(indices.size() * sizeof(unsigned int)));
    pProgram->bind();
    pProgram->enableAttributeArray(0);
    pProgram->setAttributeBuffer(0, GL_FLOAT, offsetof(_SVertex, x), 3, sizeof(_SVertex));
    pProgram->enableAttributeArray(1);
    pProgram->setAttributeBuffer(1, GL_FLOAT, offsetof(_SVertex, nx), 3, sizeof(_SVertex));
    pProgram->enableAttributeArray(2);
    pProgram->setAttributeBuffer(2, GL_FLOAT, offsetof(_SVertex, s), 2, sizeof(_SVertex));
    pProgram->setUniformValue("model", QMatrix4x4());
    pProgram->setUniformValue("view", QMatrix4x4());
    pProgram->setUniformValue("projection", matrix);
    texture.bind(0);
    pProgram->setUniformValue("qt_Texture0", 0);
    p->glDrawElements(GL_TRIANGLES, int(indices.size()), GL_UNSIGNED_INT, nullptr);
    return target.toImage();
}

bool IsLand(const QColor& colour)
{
    return colour.blue() <= std::max(colour.red(), colour.green()) + 8;
}
} // namespace

class tst_CImageView3DEarth : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSphereHasItsVerticesAndIndices()
    {
        std::vector<_SVertex> vertices;
        std::vector<unsigned int> indices;
        __InternalCreateEarth(vertices, indices, 1.0F, 360, 180);
        QCOMPARE(vertices.size(), std::size_t(65341));
        QCOMPARE(indices.size(), std::size_t(386640));
        for (const unsigned int n : indices)
            QVERIFY(n < vertices.size());
    }

    void everyVertexLiesOnTheSphereWithItsNormalAndTextureCoordinate()
    {
        constexpr unsigned int kSectors = 8;
        constexpr unsigned int kStacks = 4;
        std::vector<_SVertex> vertices;
        std::vector<unsigned int> indices;
        __InternalCreateEarth(vertices, indices, 2.0F, kSectors, kStacks);
        QCOMPARE(vertices.size(), std::size_t((kSectors + 1) * (kStacks + 1)));
        for (unsigned int i = 0; i <= kStacks; ++i)
            for (unsigned int j = 0; j <= kSectors; ++j) {
                const _SVertex& v = vertices[i * (kSectors + 1) + j];
                const QVector3D expected = PointAt(j * 45.0 - 180, 90 - i * 45.0);
                QVERIFY((QVector3D(v.nx, v.ny, v.nz) - expected).length() < 1e-6F);
                QVERIFY((QVector3D(v.x, v.y, v.z) - 2 * expected).length() < 1e-6F);
                QCOMPARE(v.s, float(j) / kSectors);
                QCOMPARE(v.t, float(i) / kStacks);
            }
    }

    void thePolesGetOneTrianglePerSector()
    {
        std::vector<_SVertex> vertices;
        std::vector<unsigned int> indices;
        __InternalCreateEarth(vertices, indices, 1.0F, 3, 3);
        QCOMPARE(indices.size(), std::size_t(3 * (2 * 3 - 2) * 3));
        QCOMPARE(std::vector<unsigned int>(indices.begin(), indices.begin() + 9),
                 (std::vector<unsigned int>{1, 4, 5, 2, 5, 6, 3, 6, 7}));
        QCOMPARE(std::vector<unsigned int>(indices.begin() + 9, indices.begin() + 15),
                 (std::vector<unsigned int>{4, 8, 5, 5, 8, 9}));
        QCOMPARE(std::vector<unsigned int>(indices.end() - 3, indices.end()),
                 (std::vector<unsigned int>{10, 14, 11}));
    }

    void noSectorsOrNoStacksGiveNothing()
    {
        std::vector<_SVertex> vertices(1);
        std::vector<unsigned int> indices(1);
        __InternalCreateEarth(vertices, indices, 1.0F, 0, 5);
        QVERIFY(vertices.empty() && indices.empty());
        __InternalCreateEarth(vertices, indices, 1.0F, 5, 0);
        QVERIFY(vertices.empty() && indices.empty());
    }

    void theCameraStartsAt003LookingAlongMinusZ()
    {
        const CImageView3DEarth view;
        QCOMPARE(view.GetCameraPosition(), QVector3D(0, 0, 3));
        QCOMPARE(view.GetCameraFront(), QVector3D(0, 0, -1));
        QCOMPARE(view.GetCameraUp(), QVector3D(0, 1, 0));
        QCOMPARE(view.GetYaw(), -90.0F);
        QCOMPARE(view.GetPitch(), 0.0F);
        QCOMPARE(view.GetFOV(), 45.0F);
    }

    void draggingLooksAround()
    {
        CImageView3DEarth view;
        Drag(view, 50, 0);
        QCOMPARE(view.GetYaw(), -95.0F);
        Drag(view, 0, 30);
        QCOMPARE(view.GetPitch(), 3.0F);
        const double yaw = qDegreesToRadians(-95.0);
        const double pitch = qDegreesToRadians(3.0);
        const QVector3D front(float(std::cos(yaw) * std::cos(pitch)), float(std::sin(pitch)),
                              float(std::sin(yaw) * std::cos(pitch)));
        QVERIFY((view.GetCameraFront() - front).length() < 1e-5F);
        Send(view, QEvent::MouseMove, QPointF(0, 0)); // released: no more
        QCOMPARE(view.GetYaw(), -95.0F);
    }

    void aDragInTwoMovesTurnsAsFarAsInOne()
    {
        CImageView3DEarth view;
        Send(view, QEvent::MouseButtonPress, QPointF(100, 100));
        Send(view, QEvent::MouseMove, QPointF(105, 102));
        Send(view, QEvent::MouseMove, QPointF(110, 110));
        Send(view, QEvent::MouseButtonRelease, QPointF(110, 110));
        QCOMPARE(view.GetYaw(), -91.0F);
        QCOMPARE(view.GetPitch(), 1.0F);
    }

    void pitchNeverPasses89HoweverFarTheMouseIsDragged()
    {
        CImageView3DEarth view;
        Drag(view, 0, 5000);
        QCOMPARE(view.GetPitch(), 89.0F);
        Drag(view, 0, -50000);
        QCOMPARE(view.GetPitch(), -89.0F);
    }

    void theWheelChangesTheFieldOfView()
    {
        CImageView3DEarth view;
        QWheelEvent wheel(QPointF(9, 9), QPointF(9, 9), QPoint(), QPoint(0, 120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&view, &wheel);
        QCOMPARE(view.GetFOV(), 43.8F);
    }

    void itRepaintsSteadilyWhileVisibleOnly()
    {
        CImageView3DEarth view;
        auto* pTimer = view.findChild<QTimer*>();
        QCOMPARE(pTimer->interval(), 16);
        QVERIFY(!pTimer->isActive());
        QVERIFY(Show(view));
        QVERIFY(pTimer->isActive());
        view.hide();
        QVERIFY(!pTimer->isActive());
    }

    void withoutSteadyRepaintItPaintsOnlyWhatIsNew()
    {
        CImageView3DEarth view;
        view.SetSteadyRepaint(false);
        QVERIFY(Show(view));
        const auto* pTimer = view.findChild<QTimer*>();
        QVERIFY(!pTimer->isActive());
        QSignalSpy painted(&view, &QOpenGLWidget::frameSwapped);
        QTest::qWait(100); // as long as six repaints
        painted.clear();
        QTest::qWait(100);
        QCOMPARE(painted.count(), 0);
        Drag(view, 20, 0);
        QTRY_VERIFY(painted.count() > 0);
        view.SetSteadyRepaint(true);
        QVERIFY(pTimer->isActive());
        view.SetSteadyRepaint(false);
        QVERIFY(!pTimer->isActive());
    }

    void theSizesAndEachPaintGoToTheDebugOutput()
    {
        for (const char* pText : {" Vector:  65341", " Indices:  386640", "Paint OpenGl"})
            QTest::ignoreMessage(QtDebugMsg, pText);
        CImageView3DEarth view;
        QVERIFY(Show(view));
        view.grabFramebuffer();
    }

    void theTextureShowsTheContinentsWhereTheyBelong()
    {
        const QImage texture(QStringLiteral(":/OpenGL/8081_earthmap4k.jpg"));
        QCOMPARE(texture.size(), QSize(4096, 2048));
        const std::pair<double, double> land[] = {{10, 50},  {20, 5},    {20, 22}, {-100, 40}, {-55, -10},
                                                  {100, 60}, {135, -25}, {78, 22}, {-42, 72},  {20, -80}};
        for (const auto& [lon, lat] : land)
            QVERIFY2(IsLand(TextureAt(texture, lon, lat)),
                     qPrintable(QStringLiteral("%1 %2").arg(lon).arg(lat)));
        const std::pair<double, double> sea[] = {{-30, 30}, {-30, -20},  {-140, 0}, {75, -20}, {-160, 35},
                                                 {170, 20}, {-120, -40}, {0, 0},    {5, 60}};
        for (const auto& [lon, lat] : sea)
            QVERIFY2(!IsLand(TextureAt(texture, lon, lat)),
                     qPrintable(QStringLiteral("%1 %2").arg(lon).arg(lat)));
        const QColor pole = TextureAt(texture, 40, -85);
        QVERIFY(pole.red() > 180 && pole.blue() > 180); // ice
    }

    /// The camera stays above the north pole; dragging turns where it looks to.
    void theGlobeShowsThePictureFromAboveTheNorthPoleHoweverItIsTurned_data()
    {
        QTest::addColumn<QPoint>("drag");
        QTest::addColumn<QPoint>("moved"); // which way the pole goes: with the mouse
        QTest::newRow("at rest") << QPoint(0, 0) << QPoint(0, 0);
        QTest::newRow("to the right") << QPoint(80, 0) << QPoint(1, 0);
        QTest::newRow("to the left") << QPoint(-80, 0) << QPoint(-1, 0);
        QTest::newRow("down") << QPoint(0, 80) << QPoint(0, 1);
        QTest::newRow("up") << QPoint(0, -80) << QPoint(0, -1);
    }

    void theGlobeShowsThePictureFromAboveTheNorthPoleHoweverItIsTurned()
    {
        QFETCH(QPoint, drag);
        QFETCH(QPoint, moved);
        CImageView3DEarth view;
        QVERIFY(Show(view));
        Drag(view, drag.x(), drag.y());
        const QImage picture = view.grabFramebuffer();
        const double yaw = qDegreesToRadians(-90 - 0.1 * drag.x());
        const double pitch = qDegreesToRadians(0.1 * drag.y());
        const QVector3D camera(0, 0, 3);
        const QVector3D front(float(std::cos(yaw) * std::cos(pitch)), float(std::sin(pitch)),
                              float(std::sin(yaw) * std::cos(pitch)));
        QMatrix4x4 matrix;
        matrix.perspective(45, 1, 0.1F, 100);
        matrix.lookAt(camera, camera + front, QVector3D(0, 1, 0));
        const QPointF pole = PlaceOf(matrix, 0, 90);
        const QPointF away = pole - QPointF(kSide / 2.0, kSide / 2.0);
        QVERIFY(moved.x() * away.x() >= 0 && moved.y() * away.y() >= 0);
        QVERIFY(moved.isNull() || moved.x() * away.x() + moved.y() * away.y() > 50);

        SComparison comparison{picture, matrix, {}, {}};
        for (int lon = -175; lon < 180; lon += 10)
            for (const int lat : {45, 55, 65, 75, 85})
                comparison.Add(lon, lat);
        QVERIFY2(comparison.nCompared > 90, qPrintable(QString::number(comparison.nCompared)));
        QVERIFY2(comparison.nEqual > comparison.nCompared * 9 / 10,
                 qPrintable(QString::number(comparison.nEqual)));
    }

    /// Sphere, shaders and picture as the view has them, before a camera over the equator.
    void europeAfricaAndTheAmericasLieWhereTheyBelongSeenFromFourSides_data()
    {
        QTest::addColumn<double>("longitude");
        QTest::addColumn<QVector<QPointF>>("land");
        QTest::addColumn<QVector<QPointF>>("sea");
        QTest::newRow("Europe and Africa")
            << 15.0 << QVector<QPointF>{{10, 50}, {20, 5}, {20, 22}, {24, -30}, {-3, 40}}
            << QVector<QPointF>{{-25, 30}, {-10, -20}, {60, -20}, {18, 35}};
        QTest::newRow("the Americas")
            << -80.0 << QVector<QPointF>{{-100, 40}, {-55, -10}, {-68, -35}, {-110, 55}, {-90, 17}}
            << QVector<QPointF>{{-50, 30}, {-100, -20}, {-90, 25}, {-120, 10}};
        QTest::newRow("Asia and Australia")
            << 105.0 << QVector<QPointF>{{100, 55}, {78, 22}, {135, -25}, {105, 30}}
            << QVector<QPointF>{{75, -15}, {90, 12}, {140, 10}, {100, -35}};
        QTest::newRow("the Pacific") << -165.0
                                     << QVector<QPointF>{{145, -28}, {172, -43}, {-120, 45}, {-152, 64}}
                                     << QVector<QPointF>{{-160, 35}, {-150, 0}, {170, 10}, {-140, -40}};
    }

    void europeAfricaAndTheAmericasLieWhereTheyBelongSeenFromFourSides()
    {
        QFETCH(double, longitude);
        QFETCH(QVector<QPointF>, land);
        QFETCH(QVector<QPointF>, sea);
        CImageView3DEarth view;
        QVERIFY(Show(view));
        QMatrix4x4 matrix;
        matrix.perspective(45, 1, 0.1F, 100);
        matrix.lookAt(3 * PointAt(longitude, 0), QVector3D(0, 0, 0), QVector3D(0, 0, 1));
        view.makeCurrent();
        const QImage picture = PaintGlobe(matrix);
        view.doneCurrent();
        for (const auto& [places, bLand] : {std::pair(land, true), {sea, false}})
            for (const QPointF& place : places) {
                const QPointF at = PlaceOf(matrix, place.x(), place.y());
                QVERIFY2(IsLand(picture.pixelColor(at.toPoint())) == bLand,
                         qPrintable(QStringLiteral("%1 %2").arg(place.x()).arg(place.y())));
            }
        SComparison comparison{picture, matrix, {}, {}};
        for (int lon = -50; lon <= 50; lon += 10)
            for (int lat = -50; lat <= 50; lat += 10)
                comparison.Add(longitude + lon, lat);
        QCOMPARE(comparison.nCompared, 121);
        QVERIFY2(comparison.nEqual > 108, qPrintable(QString::number(comparison.nEqual)));
    }

    void movingIntoAnotherWindowAndBackKeepsThePicture()
    {
        QWidget first;
        QWidget second;
        for (QWidget* pWindow : {&first, &second}) {
            pWindow->resize(kSide, kSide);
            pWindow->show();
            QVERIFY(QTest::qWaitForWindowExposed(pWindow));
        }
        auto* pView = new CImageView3DEarth(&first);
        pView->resize(kSide, kSide);
        pView->show();
        const QImage before = pView->grabFramebuffer();
        pView->setParent(&second);
        pView->show();
        QCOMPARE(pView->grabFramebuffer(), before);
        pView->hide();
        pView->setParent(&first);
        pView->show();
        QCOMPARE(pView->grabFramebuffer(), before);
        QVERIFY(before.pixelColor(kSide / 2, kSide / 2) != QColor(0, 0, 0));
    }
};

VANTOR_TEST_MAIN(tst_CImageView3DEarth)
#include "tst_CImageView3DEarth.moc"
