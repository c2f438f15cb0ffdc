// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CAnnotationList.h"
#include "CHostWindow.h"
#include "InvertTool.h"
#include "KeepAnnotations.h"
#include "MeasureAction.h"
#include "SaveTable.h"

#include <Vantor/geometry/CRectangle.h>
#include <Vantor/image/CImage.h>
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/measure/CMeasurementView.h>
#include <VantorCommon/process/CImage2DProcessBaseDlg.h>
#include <VantorCommon/shell/center/CCenterCtrl.h>
#include <VantorCommon/shell/center/CCenterView.h>
#include <VantorCommon/shell/mvc/CMVCManager.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view2d/CImageView2D.h>

#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStandardItemModel>
#include <QStatusBar>
#include <QTreeView>
#include <QtTest>

using Vantor::Algorithms::CImage;

namespace
{
QString s_strImage; // the program's argument

/// The sum of all samples over a rectangle of the current image, and over the whole image.
long long SumOf(const CImage& image, int nLeft, int nTop, int nRight, int nBottom)
{
    long long nSum = 0;
    for (int y = nTop; y < nBottom; ++y)
        for (int x = nLeft; x < nRight; ++x)
            for (int c = 0; c < image.GetChannel(); ++c)
                nSum += image.GetPixel(x, y)[c];
    return nSum;
}
} // namespace

/// Tries the host that the tutorial builds, as its author would have a person do it.
class tst_Tutorial : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_pWindow = std::make_unique<CHostWindow>();
        AddMeasureAction(*m_pWindow);
        m_pList = new CAnnotationList(*m_pWindow);
        KeepAnnotations(*m_pWindow);
        AddResultsDock(*m_pWindow);
        AddTools(*m_pWindow);
        m_pWindow->show();
        QVERIFY(QTest::qWaitForWindowActive(m_pWindow.get()));
        m_pWindow->Centre().OpenFile(s_strImage);
    }

    void cleanup() { m_pWindow.reset(); }

    void theImageIsOpen()
    {
        QVERIFY(Image());
        QCOMPARE(Image()->GetChannel(), 3);
    }

    void aFileThatCannotBeLoadedLeavesTheImage()
    {
        const auto pBefore = Image();
        m_pWindow->Centre().OpenFile(QStringLiteral("/nowhere/a.png"));
        QCOMPARE(Image(), pBefore);
    }

    void theActionTellsTheSizeOfTheAnnotationUnderTheMouse()
    {
        const auto pObject = AddRectangle();
        CImageView2D* pView = View();
        const QPoint inside = pView->MapToWidget(pObject->GetBoundary().center()).toPoint();
        pView->slot_ShowContextMenu(inside);
        auto* pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(pMenu);
        const auto lstActions = pMenu->actions();
        const auto it = std::find_if(lstActions.begin(), lstActions.end(), [](const QAction* pAction) {
            return pAction->text() == QStringLiteral("Measure");
        });
        QVERIFY(it != lstActions.end());
        (*it)->trigger();
        pMenu->close();
        QCOMPARE(m_pWindow->statusBar()->currentMessage(),
                 pObject->GetName() + QStringLiteral(": 20.0 x 10.0 pixels"));
    }

    void theListFollowsAddingSelectingDeletingAndUndo()
    {
        QCOMPARE(m_pList->count(), 0);
        const auto pObject = AddRectangle();
        QCOMPARE(m_pList->count(), 1);
        QCOMPARE(m_pList->item(0)->text(), QStringLiteral("[0] ") + pObject->GetName());
        QVERIFY(m_pList->item(0)->font().bold());
        pObject->SetSelected(false);
        QVERIFY(!m_pList->item(0)->font().bold());
        View()->setFocus();
        QTest::keyClick(View(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(m_pList->count(), 0);
        QTest::keyClick(View(), Qt::Key_Y, Qt::ControlModifier);
        QTest::keyClick(View(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); // redo, by either key
        QCOMPARE(m_pList->count(), 1);
        QVERIFY(m_pWindow->Centre().Delete2DDrawableObject(0, pObject->GetUID()));
        QCOMPARE(m_pList->count(), 0);
    }

    void theListIsEmptiedByANewImage()
    {
        AddRectangle();
        QCOMPARE(m_pList->count(), 1);
        m_pWindow->Centre().OpenFile(s_strImage);
        QCOMPARE(m_pList->count(), 0);
    }

    void annotationsAreThereAgainWhenTheirImageIsOpened()
    {
        const QTemporaryDir folder;
        const QString strImage = folder.filePath(QStringLiteral("a.png"));
        QVERIFY(QFile::copy(s_strImage, strImage));
        m_pWindow->Centre().OpenFile(strImage);
        AddRectangle();
        Trigger(QStringLiteral("&Save"));
        QTRY_VERIFY(QFile::exists(strImage + QStringLiteral(".vantor.json")));
        m_pWindow->Centre().OpenFile(s_strImage);
        QCOMPARE(m_pList->count(), 0);
        m_pWindow->Centre().OpenFile(strImage);
        QTRY_COMPARE(m_pList->count(), 1);
    }

    void theTableOfMeasurementsIsSaved()
    {
        const auto pObject = AddRectangle();
        const QTemporaryDir folder;
        const QString strTable = folder.filePath(QStringLiteral("a.csv"));
        const CImageView2DCtrl* pCtrl = nullptr;
        for (const SMVC& item : CMVCManager::m_vctItems)
            if (const auto* pViewer = dynamic_cast<CImageViewerCtrl*>(item.pCtrl);
                pViewer && pViewer->GetViewID() == 0)
                pCtrl = pViewer->Get2DCtrl();
        QVERIFY(pCtrl);
        QCOMPARE(SaveTable(*pCtrl, strTable), QString());
        QFile file(strTable);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QStringList lstLines = QString::fromUtf8(file.readAll()).split(QStringLiteral("\r\n"));
        QCOMPARE(lstLines.size(), 3);
        QVERIFY(lstLines[0].startsWith(QStringLiteral("Name,Pixels,Area [pixel\u00b2],")));
        QVERIFY(lstLines[1].startsWith(pObject->GetName() + QStringLiteral(",200,200,60,")));
        QVERIFY(!SaveTable(*pCtrl, QStringLiteral("/nowhere/a.csv")).isEmpty());
        const auto* pTable = m_pWindow->findChild<CMeasurementView*>();
        QTRY_COMPARE(pTable->GetModel()->rowCount(), 1);
    }

    void theToolInvertsTheWholeImage()
    {
        const auto pBefore = Image();
        const int w = pBefore->GetWidth();
        const int h = pBefore->GetHeight();
        const long long nBefore = SumOf(*pBefore, 0, 0, w, h);
        RunTool();
        QVERIFY(Image() != pBefore);
        QCOMPARE(SumOf(*Image(), 0, 0, w, h), 255LL * 3 * w * h - nBefore);
        View()->setFocus();
        QTest::keyClick(View(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(Image(), pBefore);
    }

    void theToolKeepsToTheRegionAndToTheThreshold()
    {
        const auto pBefore = Image();
        AddRectangle(); // the first region of a list is chosen
        auto* pRows = qobject_cast<QStandardItemModel*>(Dialog()->findChild<QTreeView*>()->model());
        QVERIFY(pRows);
        pRows->setData(pRows->index(0, 1), QStringLiteral("100"));
        RunTool();
        const auto pAfter = Image();
        int nInverted = 0;
        for (int y = 0; y < pBefore->GetHeight(); ++y)
            for (int x = 0; x < pBefore->GetWidth(); ++x)
                for (int c = 0; c < 3; ++c) {
                    const int nOld = pBefore->GetPixel(x, y)[c];
                    const bool bInvert = x >= 5 && x < 25 && y >= 5 && y < 15 && nOld >= 100;
                    nInverted += bInvert;
                    QCOMPARE(int(pAfter->GetPixel(x, y)[c]), bInvert ? 255 - nOld : nOld);
                }
        QVERIFY(nInverted > 0 && nInverted < 20 * 10 * 3); // the image has both kinds there
    }

    void theToolTellsWhyItCannotRun()
    {
        m_pWindow->Centre().CloseCurrentImage(0);
        RunTool();
        bool bTold = false;
        for (const QLabel* pLabel : Dialog()->findChildren<QLabel*>())
            bTold = bTold || pLabel->text() == QStringLiteral("The source viewer shows no image.");
        QVERIFY(bTold);
    }

private:
    std::shared_ptr<CImage> Image() { return m_pWindow->Centre().FindImage(QString()); }
    CImageView2D* View() { return m_pWindow->CentreView().findChild<CImageView2D*>(); }
    void Trigger(const QString& strText)
    {
        for (QAction* pTop : m_pWindow->menuBar()->actions())
            for (QAction* pEntry : pTop->menu()->actions())
                if (pEntry->text() == strText)
                    pEntry->trigger();
    }
    /// Opened by the menu, as a person does.
    CImage2DProcessBaseDlg* Dialog()
    {
        Trigger(QStringLiteral("Invert Light"));
        return m_pWindow->findChild<CImage2DProcessBaseDlg*>();
    }
    void RunTool()
    {
        for (QPushButton* pButton : Dialog()->findChildren<QPushButton*>())
            if (pButton->text() == QStringLiteral("Run"))
                pButton->click();
    }

    std::shared_ptr<CImageView2DDrawableGeometry> AddRectangle()
    {
        auto pObject = std::make_shared<CImageView2DDrawableGeometry>();
        pObject->SetData(std::make_shared<Vantor::Geometry::CRectangle>(5, 5, 20, 10));
        m_pWindow->Centre().AddRectangle(0, pObject);
        return pObject;
    }

    std::unique_ptr<CHostWindow> m_pWindow;
    CAnnotationList* m_pList = nullptr;
};

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    const QStringList lstArguments = QApplication::arguments();
    if (lstArguments.size() != 2)
        return 2;
    s_strImage = lstArguments.at(1);
    tst_Tutorial test;
    return QTest::qExec(&test, {lstArguments.first()});
}

#include "tst_Tutorial.moc"
