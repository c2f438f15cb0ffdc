// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/VantorCommon/view3d/View3DFixture.h"
#include "tests/support/LogRecorder.h"
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QMenu>
#include <QOpenGLDebugMessage>
#include <QOpenGLExtraFunctions>
#include <QOpenGLShaderProgram>
#include <QScreen>
#include <QTemporaryDir>

using Vantor::Algorithms::CImage;

namespace
{
const QColor kBackground(51, 51, 51);
const QColor kReference(128, 128, 128);

/// Four squares of one colour each, from the top left.
const QColor kSquares[] = {QColor(200, 40, 40), QColor(240, 240, 0), QColor(0, 200, 220), QColor(90, 0, 160)};
constexpr int kSquareSide = 32;

std::shared_ptr<CImage> MakeSquares()
{
    auto pImage = MakeTestImage(2 * kSquareSide, 2 * kSquareSide, 3);
    for (int y = 0; y < 2 * kSquareSide; ++y)
        for (int x = 0; x < 2 * kSquareSide; ++x) {
            const QColor& colour = kSquares[y / kSquareSide * 2 + x / kSquareSide];
            unsigned char* p = pImage->GetPixel(x, y);
            p[0] = static_cast<unsigned char>(colour.red());
            p[1] = static_cast<unsigned char>(colour.green());
            p[2] = static_cast<unsigned char>(colour.blue());
        }
    return pImage;
}

/// The middle of a square on the surface of the relief.
QVector3D SquareCentre(int nSquare)
{
    const QColor& colour = kSquares[nSquare];
    const double grey = 0.2126 * colour.red() + 0.7152 * colour.green() + 0.0722 * colour.blue();
    return QVector3D(nSquare % 2 == 0 ? 0.25F : 0.75F, nSquare / 2 == 0 ? 0.75F : 0.25F,
                     float(grey * 0.1 / 255));
}

bool HasRelief(const SView3DFixture& fixture, const QImage& picture)
{
    for (int i = 0; i < 4; ++i)
        if (!fixture.HasColour(picture, SquareCentre(i), kSquares[i])) {
            qInfo() << "square" << i << fixture.Project(SquareCentre(i));
            return false;
        }
    return true;
}

/// How many buffers, arrays and programs the view's context holds.
int CountObjects(QOpenGLWidget& view)
{
    view.makeCurrent();
    QOpenGLExtraFunctions* p = view.context()->extraFunctions();
    int nCount = 0;
    for (GLuint i = 1; i < 5000; ++i)
        nCount += int(p->glIsBuffer(i)) + int(p->glIsVertexArray(i));
    // The names of programs and shaders are not used again: they only grow.
    for (GLuint i = 1; i < 100000; ++i)
        nCount += int(p->glIsProgram(i)) + int(p->glIsShader(i));
    view.doneCurrent();
    return nCount;
}
} // namespace

class tst_CImageView3D : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { CImageView3DModel::SetBufferLimit(std::size_t(2) << 30); }

    void theContextIsOfVersion33CoreWithDepth()
    {
        SView3DFixture fixture;
        LogRecorder log;
        QVERIFY(fixture.Show());
        const QSurfaceFormat format = fixture.pView->context()->format();
        QVERIFY(format.version() >= qMakePair(3, 3));
        QCOMPARE(format.profile(), QSurfaceFormat::CoreProfile);
        QVERIFY(format.depthBufferSize() >= 24);
        QVERIFY(format.testOption(QSurfaceFormat::DebugContext));
        const QStringList lines = log.Take().filter(QStringLiteral("OpenGL version: "));
        QCOMPARE(lines.size(), 1);
        QVERIFY(lines[0].startsWith(QStringLiteral("1:OpenGL version: ")));
        QVERIFY(lines[0].contains(QStringLiteral(", ")));
    }

    void withNoImageTheViewShowsOnlyTheAxesAndTheReference()
    {
        SView3DFixture fixture;
        QVERIFY(fixture.Show());
        const QImage picture = fixture.Picture();
        QVERIFY(fixture.HasAxes(picture));
        for (int i = 0; i < 4; ++i)
            QVERIFY(fixture.HasColour(picture, SquareCentre(i), kBackground));
        QSet<QRgb> colours;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                colours.insert(picture.pixel(x, y));
        const QSet<QRgb> expected = {kBackground.rgb(), kReference.rgb(), qRgb(255, 0, 0), qRgb(0, 255, 0),
                                     qRgb(0, 0, 255)};
        QCOMPARE(colours, expected);
    }

    void theReferenceReachesFromMinusOneToTwoInTheGroundPlane()
    {
        SView3DFixture fixture;
        QVERIFY(fixture.Show());
        fixture.model.SetRotateX(0);
        fixture.model.SetRotateZ(0);
        fixture.model.SetFOV(45); // the whole frame, seen from above
        const QImage picture = fixture.Picture();
        for (const QVector3D& point :
             {QVector3D(-0.99F, 0.7F, 0), QVector3D(1.99F, 0.7F, 0), QVector3D(0.7F, -0.99F, 0),
              QVector3D(0.7F, 1.99F, 0), QVector3D(-0.99F, -0.99F, 0), QVector3D(1.99F, 1.99F, 0)})
            QVERIFY(fixture.HasColour(picture, point, kReference));
        for (const QVector3D& point :
             {QVector3D(-1.1F, 0.7F, 0), QVector3D(2.1F, 0.7F, 0), QVector3D(1.5F, 1.5F, 0)})
            QVERIFY(!fixture.HasColour(picture, point, kReference));
    }

    void theReliefOfAKnownImageStandsWhereItBelongs()
    {
        SView3DFixture fixture;
        fixture.images.SetImages({MakeSquares()});
        LogRecorder log;
        QVERIFY(fixture.Show());
        QVERIFY(fixture.WaitForLoad(1));
        QVERIFY(HasRelief(fixture, fixture.Picture()));
        const QStringList lines = log.Take();
        const int nStart = lines.indexOf(QStringLiteral("1:Start upload data to gpu"));
        QVERIFY(nStart >= 0);
        QCOMPARE(lines.mid(nStart, 5),
                 (QStringList{QStringLiteral("1:Start upload data to gpu"),
                              QStringLiteral("1:OpenGL Error: 0"), QStringLiteral("1:OpenGL Error: 0"),
                              QStringLiteral("1:OpenGL vertices: 24576, indices: 23814"),
                              QStringLiteral("1:Set Image OpenGL")}));
    }

    void seenFromAboveTheImageStandsUpright()
    {
        SView3DFixture fixture;
        fixture.images.SetImages({MakeSquares()});
        QVERIFY(fixture.Show());
        QVERIFY(fixture.WaitForLoad(1));
        fixture.model.SetRotateX(0);
        fixture.model.SetRotateZ(0);
        const QImage picture = fixture.Picture();
        const int nQuarter = SView3DFixture::kSide * 3 / 8;
        const int nFar = SView3DFixture::kSide * 5 / 8;
        QCOMPARE(picture.pixelColor(nQuarter, nQuarter), kSquares[0]);
        QCOMPARE(picture.pixelColor(nFar, nQuarter), kSquares[1]);
        QCOMPARE(picture.pixelColor(nQuarter, nFar), kSquares[2]);
        QCOMPARE(picture.pixelColor(nFar, nFar), kSquares[3]);
    }

    /// As a person sees it: what is on the screen, not what the view would paint when asked.
    void afterAResizeTheScreenShowsTheRelief()
    {
        SView3DFixture fixture;
        fixture.images.SetImages({MakeSquares()});
        QVERIFY(fixture.Show());
        QVERIFY(fixture.WaitForLoad(1));
        fixture.pView->resize(300, 260);
        const auto onScreen = [&] {
            const QPoint at = fixture.pView->mapToGlobal(QPoint(0, 0));
            return fixture.window.screen()
                ->grabWindow(0, at.x(), at.y(), fixture.pView->width(), fixture.pView->height())
                .toImage();
        };
        QTRY_VERIFY(HasRelief(fixture, onScreen()));
    }

    void aMessageOfTheDriverIsLoggedAsItIs()
    {
        CImageView3D view(nullptr, nullptr);
        LogRecorder log;
        view.slot_OpenGLMessageLogged(
            QOpenGLDebugMessage::createApplicationMessage(QStringLiteral("100 %s done")));
        QCOMPARE(log.Take(), QStringList{QStringLiteral("1:OpenGL: 100 %s done")});
    }

    void draggingTenPixelsTurnsByOneDegree()
    {
        SView3DFixture fixture;
        QVERIFY(fixture.Show());
        const QImage before = fixture.Picture();
        fixture.Drag(10, 0);
        QCOMPARE(fixture.model.GetRotateY(), 1.0F);
        QCOMPARE(fixture.model.GetRotateX(), -73.0F);
        fixture.Drag(0, 10);
        QCOMPARE(fixture.model.GetRotateX(), -74.0F);
        QCOMPARE(fixture.model.GetRotateY(), 1.0F);
        fixture.Drag(150, -120);
        QCOMPARE(fixture.model.GetRotateX(), -62.0F);
        QCOMPARE(fixture.model.GetRotateY(), 16.0F);
        const QImage after = fixture.Picture();
        QVERIFY(after != before);
        QVERIFY(fixture.HasAxes(after));
    }

    void aMoveWithoutAPressTurnsNothing()
    {
        SView3DFixture fixture;
        QVERIFY(fixture.Show());
        fixture.Drag(10, 0);
        const QPointF to(5, 5);
        QMouseEvent move(QEvent::MouseMove, to, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(fixture.pView, &move);
        QCOMPARE(fixture.model.GetRotateY(), 1.0F);
    }

    void oneWheelNotchForwardLowersTheFieldOfViewBy12()
    {
        SView3DFixture fixture;
        fixture.images.SetImages({MakeSquares()});
        QVERIFY(fixture.Show());
        QVERIFY(fixture.WaitForLoad(1));
        const QImage before = fixture.Picture();
        fixture.Wheel(120);
        QCOMPARE(fixture.model.GetFOV(), 20.8F);
        const QImage after = fixture.Picture();
        QVERIFY(after != before);
        QVERIFY(HasRelief(fixture, after));
        fixture.Wheel(-120);
        QCOMPARE(fixture.Picture(), before);
    }

    void theViewItselfNeverChangesTheModel()
    {
        SView3DFixture fixture;
        QVERIFY(fixture.Show());
        fixture.pCtrl.reset();
        QSignalSpy x(fixture.pView, &CImageView3D::signal_ChangeRotateX);
        QSignalSpy y(fixture.pView, &CImageView3D::signal_ChangeRotateY);
        QSignalSpy fov(fixture.pView, &CImageView3D::signal_ChangeFOV);
        QSignalSpy active(fixture.pView, &CImageView3D::signal_Active3DView);
        fixture.Drag(10, 20);
        fixture.Wheel(120);
        QCOMPARE(x.takeFirst().at(0).toDouble(), -75.0);
        QCOMPARE(y.takeFirst().at(0).toDouble(), 1.0);
        QVERIFY(std::abs(fov.takeFirst().at(0).toDouble() - 20.8) < 1e-9);
        QCOMPARE(active.count(), 1);
        QCOMPARE(fixture.model.GetRotateX(), -73.0F);
        QCOMPARE(fixture.model.GetFOV(), 22.0F);
    }

    void anImageOfTwoChannelsIsNotDrawn()
    {
        SView3DFixture fixture;
        QVERIFY(fixture.Show());
        const QImage empty = fixture.Picture();
        fixture.images.SetImages({MakeTestImage(20, 20, 2)});
        QVERIFY(fixture.WaitForLoad(1));
        QCOMPARE(fixture.Picture(), empty);
    }

    void anImageOverTheLimitLeavesAxesAndReferenceOnly()
    {
        SView3DFixture fixture;
        QVERIFY(fixture.Show());
        const QImage empty = fixture.Picture();
        fixture.images.SetImages({MakeSquares()});
        QVERIFY(fixture.WaitForLoad(1));
        QVERIFY(fixture.Picture() != empty);
        CImageView3DModel::SetBufferLimit(1000);
        fixture.images.SetImages({MakeSquares()});
        QVERIFY(fixture.WaitForLoad(2));
        QTRY_COMPARE(fixture.Picture(), empty);
    }

    void showingAgainMakesTheObjectsAnewAndLoadsTheImageAgain()
    {
        SView3DFixture fixture;
        fixture.images.SetImages({MakeSquares()});
        QVERIFY(fixture.Show());
        QVERIFY(fixture.WaitForLoad(1));
        const QImage before = fixture.Picture();
        fixture.pView->hide();
        QSignalSpy ask(fixture.pView, &CImageView3D::signal_ChangeCurrentImage);
        QSignalSpy active(fixture.pView, &CImageView3D::signal_Active3DView);
        fixture.loads.clear();
        fixture.pView->setVisible(true);
        QCOMPARE(ask.count(), 1);
        QCOMPARE(active.count(), 1);
        QVERIFY(fixture.WaitForLoad(1));
        QCOMPARE(fixture.Picture(), before);
        QCOMPARE(ask.count(), 1);
    }

    void shownWithItsWindowTheViewAsksForTheImageOnce()
    {
        SView3DFixture fixture;
        fixture.images.SetImages({MakeSquares()});
        fixture.pView->show(); // the window is still hidden: nothing is loaded
        QSignalSpy ask(fixture.pView, &CImageView3D::signal_ChangeCurrentImage);
        QVERIFY(fixture.ShowWindow());
        QVERIFY(fixture.WaitForLoad(1));
        QCOMPARE(ask.count(), 1);
        QVERIFY(HasRelief(fixture, fixture.Picture()));
    }

    void movingTheViewIntoAnotherWindowWorks()
    {
        SView3DFixture fixture;
        fixture.images.SetImages({MakeSquares()});
        QVERIFY(fixture.Show());
        QVERIFY(fixture.WaitForLoad(1));
        const QImage before = fixture.Picture();
        QWidget other;
        other.resize(fixture.window.size());
        other.show();
        QVERIFY(QTest::qWaitForWindowExposed(&other));
        fixture.loads.clear();
        fixture.pView->setParent(&other);
        fixture.pView->show();
        QVERIFY(fixture.WaitForLoad(1));
        QCOMPARE(fixture.Picture(), before);
        delete fixture.pView;
    }

    void theObjectCountStaysFlatOverShowingHidingAndReparenting()
    {
        constexpr int kCycles = 1000;
        SView3DFixture fixture;
        fixture.images.SetImages({MakeTestImage(4, 4, 1)});
        QVERIFY(fixture.Show());
        QWidget other;
        other.resize(fixture.window.size());
        other.show();
        QVERIFY(QTest::qWaitForWindowExposed(&other));
        constexpr int kRound = 60; // after each round the view is in its first window again
        // What the window itself holds comes and goes; one forgotten set of the view's would be eleven.
        constexpr int kWindowObjects = 4;
        int nObjects = 0;
        for (int i = 0; i < kCycles; ++i) {
            fixture.pView->setVisible(false);
            if (i % 3 == 2)
                fixture.pView->setParent(i % 2 == 0 ? &other : &fixture.window);
            fixture.pView->setVisible(true);
            fixture.Picture();
            QCoreApplication::processEvents();
            if (i == kRound - 1)
                nObjects = CountObjects(*fixture.pView);
            else if (i % kRound == kRound - 1)
                QVERIFY(std::abs(CountObjects(*fixture.pView) - nObjects) <= kWindowObjects);
        }
        // Three programs, five buffers, three arrays, and what the window itself needs.
        QVERIFY(nObjects >= 3 + 5 + 3);
        fixture.pView->setParent(&fixture.window);
    }

    void everyShaderCompilesAndAMissingOneGivesNull()
    {
        SView3DFixture fixture;
        QVERIFY(fixture.Show());
        fixture.pView->makeCurrent();
        const QString strFolder = QStringLiteral(":/OpenGL/");
        const std::unique_ptr<QOpenGLShaderProgram> pMesh(
            __InternalCreateProgram(strFolder + QStringLiteral("vertex_shader.vert"),
                                    strFolder + QStringLiteral("frag_shader.frag")));
        QVERIFY(pMesh && pMesh->isLinked());
        QCOMPARE(pMesh->attributeLocation("aPos"), 0);
        QCOMPARE(pMesh->attributeLocation("aColor"), 1);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("Unable to open file")));
        QVERIFY(!__InternalCreateProgram(strFolder + QStringLiteral("none.vert"),
                                         strFolder + QStringLiteral("frag_shader.frag")));
        fixture.pView->doneCurrent();
    }

    void shadersThatDoNotFitTogetherAreLoggedAndGiveNull()
    {
        SView3DFixture fixture;
        QVERIFY(fixture.Show());
        const QTemporaryDir folder;
        const auto write = [&folder](const char* pName, const char* pText) {
            QFile file(folder.filePath(QString::fromLatin1(pName)));
            if (file.open(QIODevice::WriteOnly))
                file.write(pText);
            return file.fileName();
        };
        const QString strVertex =
            write("a.vert",
                  "#version 330 core\nout vec3 c;\nvoid main() { c = vec3(1); gl_Position = vec4(0); }\n");
        const QString strFragment =
            write("a.frag", "#version 330 core\nin vec2 c;\nout vec4 o;\nvoid main() { o = vec4(c, c); }\n");
        LogRecorder log;
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("QOpenGLShader::link.*")));
        fixture.pView->makeCurrent();
        QVERIFY(!__InternalCreateProgram(strVertex, strFragment));
        fixture.pView->doneCurrent();
        const QStringList lines = log.Take().filter(QStringLiteral("does not link"));
        QCOMPARE(lines.size(), 1);
        QVERIFY2(lines[0].startsWith(QStringLiteral("3:OpenGL: ") + strVertex), qPrintable(lines[0]));
    }

    void theContextMenuSwitchesToThe2DView()
    {
        SView3DFixture fixture;
        QVERIFY(fixture.Show());
        QCOMPARE(fixture.pView->contextMenuPolicy(), Qt::CustomContextMenu);
        QSignalSpy spy(fixture.pView, &CImageView3D::signal_Switch3DTo2D);
        Q_EMIT fixture.pView->customContextMenuRequested(QPoint(10, 10));
        auto* pMenu = fixture.pView->findChild<QMenu*>();
        QTRY_VERIFY(pMenu->isVisible());
        QCOMPARE(pMenu->actions().size(), 1);
        QCOMPARE(pMenu->actions()[0]->text(), QStringLiteral("Switch To 2D View"));
        pMenu->actions()[0]->trigger();
        QCOMPARE(spy.count(), 1);
        pMenu->close();
    }

    void sizesAreTheExpectedOnes()
    {
        const CImageView3D view(nullptr, nullptr);
        QCOMPARE(view.sizeHint(), QSize(200, 200));
        QCOMPARE(view.minimumSizeHint(), QSize(50, 50));
    }

    void withoutAModelTheViewShowsAndIgnoresTheMouse()
    {
        CImageView3D view(nullptr, nullptr);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        view.InitMatrix();
        view.slot_LoadFinished();
        view.slot_ChangeImage();
        view.slot_Timmer();
        view.rotatedBy(1, 2, 3);
        view.setClearColor(Qt::red);
        QSignalSpy spy(&view, &CImageView3D::signal_ChangeRotateX);
        QTest::mousePress(&view, Qt::LeftButton);
        QMouseEvent move(QEvent::MouseMove, QPointF(1, 1), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&view, &move);
        QCOMPARE(spy.count(), 0);
    }

    void aLoadBeforeTheFirstShowIsHarmless()
    {
        CImageView3DModel model;
        CImageView3D view(&model, nullptr);
        view.InitImageView3DGL();
        view.InitLog();
        model.LoadImage(MakeTestImage(4, 4, 1));
        QCOMPARE(model.GetVerticesSize(), 0); // nobody can show it
    }
};

VANTOR_TEST_MAIN(tst_CImageView3D)
#include "tst_CImageView3D.moc"
