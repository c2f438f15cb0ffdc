// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "HostSupport.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/view3d/CImageView3D.h>

#include <QOpenGLContext>

namespace
{
QOpenGLContext::OpenGLModuleType g_eType = QOpenGLContext::LibGL;
}

/// Stands in for Qt's own, in this program.
QOpenGLContext::OpenGLModuleType QOpenGLContext::openGLModuleType()
{
    return g_eType;
}

/// The window where there is no OpenGL 3.3: main() asks for an old driver.
class tst_CMainWindowWithoutGL : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void anOldDriverIsToldWhenThe3DViewIsAskedFor()
    {
        Host host;
        QVERIFY(host.Show({kPhoto}));
        QCOMPARE(host.Message(), QString());
        host.Entry("View", "3D View")->trigger();
        QTRY_COMPARE(host.Message(),
                     QStringLiteral("The 3D view needs OpenGL 3.3, which this system does not offer."));
        host.Entry("View", "2D View")->trigger();
        QTRY_VERIFY(host.View(0)->hasFocus());
    }

    void aSystemWithOpenGLESAloneIsToldToo()
    {
        g_eType = QOpenGLContext::LibGLES;
        Host host;
        QVERIFY(host.Show({kPhoto}));
        QVERIFY(!host.window.findChild<CImageView3D*>());
        QCOMPARE(host.Message(), QString());
        host.Entry("View", "3D View")->trigger();
        QCOMPARE(host.Message(),
                 QStringLiteral("The 3D view needs OpenGL 3.3, which this system does not offer."));
        g_eType = QOpenGLContext::LibGL;
    }
};

int main(int argc, char* argv[])
{
    qputenv("MESA_GL_VERSION_OVERRIDE", "2.1");
    QApplication app(argc, argv);
    QApplication::setAttribute(Qt::AA_Use96Dpi, true);
    tst_CMainWindowWithoutGL test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_CMainWindowWithoutGL.moc"
