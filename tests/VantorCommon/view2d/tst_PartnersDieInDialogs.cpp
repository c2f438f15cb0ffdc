// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "tests/support/CenterFixture.h"
#include "tests/support/TestMain.h"

#include <VantorCommon/annotation/model/CImageView2DGeometryModel.h>
#include <VantorCommon/annotation/model/CImageView2DToolModel.h>
#include <VantorCommon/view2d/CImageView2DCtrl.h>
#include <VantorCommon/view2d/CImageView2DModel.h>

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTimer>

namespace
{
const QString kLocked = QStringLiteral("pdf/enc-R3,V2,U=view,O=master.pdf");
const QString kPicture = QStringLiteral("jpeg/hopper.jpg");

/// A 2D view with its controller, each of which may be deleted.
struct Parts {
    CImageView2DModel model;
    CImageView2DGeometryModel geometry;
    CImageView2DToolModel tools;
    CImageView2D* pView = new CImageView2D(&model, &geometry, &tools, 0, nullptr);
    CImageView2DCtrl* pCtrl =
        new CImageView2DCtrl(&model, &geometry, &tools, pView, nullptr, nullptr, nullptr);
};

QString FileFor(const QString& strSlot, const QTemporaryDir& dir)
{
    if (strSlot == QLatin1String("slot_SaveImage") || strSlot == QLatin1String("slot_SaveFile"))
        return dir.filePath(QStringLiteral("saved.png"));
    return TestDataPath(kPicture);
}

/// Enters a path into the file dialog that is open, if there is one still, and accepts it.
void AcceptFile(const QString& strPath)
{
    auto* pDialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (!pDialog)
        return;
    pDialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(strPath);
    static_cast<QDialog*>(pDialog)->accept();
}
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

    void theControllerMayGoWhileAFileIsAskedFor_data()
    {
        QTest::addColumn<QString>("strSlot");
        QTest::addColumn<bool>("bViewToo");
        QTest::addColumn<bool>("bPropose");
        for (const char* pSlot :
             {"slot_LoadFile", "slot_LoadImage", "slot_LoadPdf", "slot_AddImage", "slot_SaveImage"})
            for (const bool bViewToo : {false, true})
                QTest::addRow("%s%s", pSlot, bViewToo ? ", its view, too" : "")
                    << QString::fromLatin1(pSlot) << bViewToo << false;
        QTest::addRow("slot_SaveImage, a name proposed") << QStringLiteral("slot_SaveImage") << false << true;
    }
    void theControllerMayGoWhileAFileIsAskedFor()
    {
        QFETCH(QString, strSlot);
        QFETCH(bool, bViewToo);
        QFETCH(bool, bPropose);
        const QTemporaryDir dir;
        const auto pImage = MakeTestImage(30, 20, 3);
        Parts p;
        SCenterOptions options;
        options.bProposeSaveName = bPropose;
        p.pCtrl->SetOptions(options);
        p.model.PushImage(pImage);
        WhenAsked([&] {
            delete p.pCtrl;
            if (bViewToo)
                delete p.pView; // and the dialog with it
            AcceptFile(FileFor(strSlot, dir));
        });
        QVERIFY(QMetaObject::invokeMethod(p.pCtrl, qPrintable(strSlot)));
        QVERIFY(m_bAsked);
        QCOMPARE(p.model.GetImageCount(), 1);
        QCOMPARE(p.model.GetCurrentImage(), pImage);
        QVERIFY(QDir(dir.path()).isEmpty());
        if (!bViewToo)
            delete p.pView;
    }

    void theControllerMayGoWhileThePasswordOfTheFirstOfSeveralFilesIsAskedFor()
    {
        Parts p;
        WhenAsked([&] {
            WhenAsked([&] {
                delete p.pCtrl;
                delete p.pView;
            });
            AcceptFile(QStringLiteral("\"%1\" \"%2\"").arg(TestDataPath(kLocked), TestDataPath(kPicture)));
        });
        p.pCtrl->slot_AddImage();
        QVERIFY(m_bAsked);
        QCOMPARE(p.model.GetImageCount(), 0);
    }

    void theCentreMayGoWhileAFileIsAskedFor_data()
    {
        QTest::addColumn<QString>("strSlot");
        QTest::addColumn<bool>("bViewToo");
        for (const char* pSlot : {"slot_OpenFile", "slot_SaveFile"})
            for (const bool bViewToo : {false, true})
                QTest::addRow("%s%s", pSlot, bViewToo ? ", its view, too" : "")
                    << QString::fromLatin1(pSlot) << bViewToo;
    }
    void theCentreMayGoWhileAFileIsAskedFor()
    {
        QFETCH(QString, strSlot);
        QFETCH(bool, bViewToo);
        const QTemporaryDir dir;
        auto pModel = std::make_unique<CCenterModel>();
        auto* pView = new CCenterView(pModel.get(), nullptr);
        auto* pCtrl = new CCenterCtrl(pModel.get(), pView, nullptr, nullptr, nullptr);
        pCtrl->OpenFile(TestDataPath(kPicture));
        WhenAsked([&] {
            delete pCtrl;
            if (bViewToo)
                delete pView; // and the dialog with it
            AcceptFile(FileFor(strSlot, dir));
        });
        QVERIFY(QMetaObject::invokeMethod(pCtrl, qPrintable(strSlot)));
        QVERIFY(m_bAsked);
        QVERIFY(QDir(dir.path()).isEmpty());
        if (!bViewToo)
            delete pView;
    }

    void theCentreMayGoWhileThePasswordIsAskedFor()
    {
        auto pModel = std::make_unique<CCenterModel>();
        auto* pView = new CCenterView(pModel.get(), nullptr);
        auto* pCtrl = new CCenterCtrl(pModel.get(), pView, nullptr, nullptr, nullptr);
        WhenAsked([&] {
            delete pCtrl;
            delete pView;
        });
        int nViewID = 0;
        unsigned int nImageID = 0;
        pCtrl->OpenFileWithViewIDImageID(TestDataPath(kLocked), nViewID, nImageID);
        QVERIFY(m_bAsked);
        QCOMPARE(nViewID, -1);
        QCOMPARE(nImageID, 0xFFFFFFFFu);
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
