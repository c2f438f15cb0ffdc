// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/CenterFixture.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QApplication>
#include <QDialog>
#include <QTimer>

namespace
{
const QString kLocked = QStringLiteral("pdf/enc-R3,V2,U=view,O=master.pdf");

/// A 2D view with its controller, each of which may be deleted.
struct Parts {
    CImageView2DModel model;
    CImageView2DGeometryModel geometry;
    CImageView2DToolModel tools;
    CImageView2D* pView = new CImageView2D(&model, &geometry, &tools, 0, nullptr);
    CImageView2DCtrl* pCtrl =
        new CImageView2DCtrl(&model, &geometry, &tools, pView, nullptr, nullptr, nullptr);
};
} // namespace

/// Whoever asks the user may be gone when the answer comes.
class tst_PartnersDieInDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QVERIFY(CMVCManager::m_vctItems.empty()); }

    void theControllerMayGoWhileThePasswordIsAskedFor()
    {
        for (bool bAdd : {false, true}) {
            Parts p;
            WhenAsked([&] {
                delete p.pCtrl;
                delete p.pView;
            });
            if (bAdd)
                p.pCtrl->AddImage(TestDataPath(kLocked));
            else
                p.pCtrl->LoadFile(TestDataPath(kLocked));
            QVERIFY(m_bAsked);
            QCOMPARE(p.model.GetImageCount(), 0);
        }
    }

    void theViewMayGoWhileAPositionIsAskedFor()
    {
        Parts p;
        p.model.PushImage(MakeTestImage(30, 20, 3));
        WhenAsked([&] { delete p.pView; });
        p.pView->slot_Goto();
        QVERIFY(m_bAsked);
        delete p.pCtrl;
    }

    void theViewMayGoWhileAFileNameIsAskedFor()
    {
        Parts p;
        p.model.PushImage(MakeTestImage(30, 20, 3));
        WhenAsked([&] { delete p.pView; });
        p.pCtrl->slot_SaveImage();
        QVERIFY(m_bAsked);
        delete p.pCtrl;
    }

    void theCentreMayGoWhileAViewerIsChosen()
    {
        auto pModel = std::make_unique<CCenterModel>();
        auto* pView = new CCenterView(pModel.get(), nullptr);
        auto* pCtrl = new CCenterCtrl(pModel.get(), pView, nullptr, nullptr, nullptr);
        pCtrl->slot_ChangeLayout2x2();
        WhenAsked([&] {
            delete pCtrl;
            delete pView;
        });
        const SMVCItem item = pCtrl->SelectMVC();
        QVERIFY(m_bAsked);
        QVERIFY(!item.pCtrl && !item.pView && !item.pModel);
    }

private:
    void WhenAsked(const std::function<void()>& func)
    {
        m_bAsked = false;
        auto* pTimer = new QTimer(this);
        connect(pTimer, &QTimer::timeout, this, [this, pTimer, func] {
            if (!qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                return;
            pTimer->deleteLater();
            pTimer->stop();
            m_bAsked = true;
            func();
        });
        pTimer->start(10);
    }

    bool m_bAsked = false;
};

VANTOR_TEST_MAIN(tst_PartnersDieInDialogs)
#include "tst_PartnersDieInDialogs.moc"
