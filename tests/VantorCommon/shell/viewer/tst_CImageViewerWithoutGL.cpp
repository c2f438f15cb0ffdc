// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/TestImages.h"
#include "tests/support/TestMain.h"
#include "tests/support/ViewerParts.h"

#include <Vantor/geometry/CRectangle.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/shell/viewer/CImageViewerModel.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <VantorCommon/view3d/CImageView3D.h>
#include <VantorCommon/view3d/CImageView3DNotSupported.h>

#include <QHBoxLayout>
#include <QOpenGLContext>

/// Stands in for Qt's own, in this program: a system that has OpenGL ES only.
QOpenGLContext::OpenGLModuleType QOpenGLContext::openGLModuleType()
{
    return LibGLES;
}

class tst_CImageViewerWithoutGL : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theControllerPutsThePlaceholderInPlaceOfThe3DView()
    {
        CImageViewerModel model;
        CImageView2DToolModel tool;
        CImageViewer viewer(&model, 0, nullptr);
        const CImageViewerCtrl ctrl(&viewer, &model, &tool, nullptr, nullptr, nullptr);
        QVERIFY(!viewer.findChild<CImageView3D*>());
        QCOMPARE(ctrl.Get3DCtrl(), nullptr);
        const auto* pPlaceholder = dynamic_cast<CImageView3DNotSupported*>(
            viewer.findChild<CImageView2D*>()->parentWidget()->layout()->itemAt(1)->widget());
        QVERIFY(pPlaceholder);
        viewer.show();
        QVERIFY(QTest::qWaitForWindowActive(&viewer));
        QVERIFY(!pPlaceholder->isVisible());
        QTest::mouseClick(ViewerParts(&viewer).Button(QStringLiteral("3D.png")), Qt::LeftButton);
        QVERIFY(!viewer.findChild<CImageView2D*>()->isVisible());
        const auto* pLabel = pPlaceholder->findChild<QLabel*>();
        QVERIFY(pLabel->isVisible());
        QCOMPARE(pLabel->text(), QStringLiteral("System doesnot support OpenGL"));
        QTest::mouseClick(ViewerParts(&viewer).Button(QStringLiteral("2D.png")), Qt::LeftButton);
        QVERIFY(viewer.findChild<CImageView2D*>()->isVisible() && !pPlaceholder->isVisible());
    }

    void undoAndRedoSkipTheMissing3DControllerAndReturnFalse()
    {
        CImageViewerModel model;
        CImageView2DToolModel tool;
        CImageViewer viewer(&model, 0, nullptr);
        CImageViewerCtrl ctrl(&viewer, &model, &tool, nullptr, nullptr, nullptr);
        viewer.show();
        QVERIFY(QTest::qWaitForWindowActive(&viewer));
        auto* pView = viewer.findChild<CImageView2D*>();
        pView->setFocus();
        QTRY_VERIFY(pView->hasFocus());
        const auto pObject = std::make_shared<CImageView2DDrawableGeometry>();
        pObject->SetData(std::make_shared<Vantor::Geometry::CRectangle>(1, 2, 30, 40));
        ctrl.AddRectangle(pObject);
        QVERIFY(!ctrl.Undo());
        QVERIFY(ctrl.Get2DDrawableObjects().empty());
        QVERIFY(!ctrl.Redo());
        QCOMPARE(ctrl.Get2DDrawableObjects().size(), std::size_t(1));
    }
};

VANTOR_TEST_MAIN(tst_CImageViewerWithoutGL)
#include "tst_CImageViewerWithoutGL.moc"
