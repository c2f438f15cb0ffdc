// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/object/CImageView2DDrawableGeometry.h>
#include <VantorCommon/shell/center/CCenterCtrl.h>
#include <VantorCommon/shell/center/CCenterModel.h>
#include <VantorCommon/shell/center/CCenterView.h>
#include <VantorCommon/shell/viewer/CImageViewer.h>
#include <VantorCommon/shell/viewer/CImageViewerCtrl.h>
#include <VantorCommon/view2d/CImageView2D.h>
#include <tests/support/CenterFixture.h>
#include <tests/support/TestMain.h>

/// Two viewers side by side, each with an image of its own, worked with mouse and keys.
class tst_TwoViewers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void drawingHappensInTheViewerUnderTheMouseAlone()
    {
        CenterFixture f(2, 1);
        f.DrawRectangle(1, {20, 20}, {60, 60});
        QCOMPARE(f.Viewer(0)->Get2DDrawableObjects().size(), std::size_t(0));
        QCOMPARE(f.Viewer(1)->Get2DDrawableObjects().size(), std::size_t(1));
    }

    void undoAndRedoActInTheFocusedViewerOnly()
    {
        CenterFixture f(2, 1);
        f.DrawRectangle(0, {20, 20}, {60, 60});
        f.DrawRectangle(1, {20, 20}, {60, 60});
        QVERIFY(f.View(1)->hasFocus());
        f.center->Undo();
        QCOMPARE(f.Counts(), (QVector<int>{1, 0, 0, 0}));
        f.Key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(f.Counts(), (QVector<int>{1, 0, 0, 0}));
        f.ClickAt(0, {150, 10});
        QVERIFY(f.View(0)->hasFocus());
        f.Key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(f.Counts(), (QVector<int>{0, 0, 0, 0}));
        f.Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(f.Counts(), (QVector<int>{1, 0, 0, 0}));
        f.ClickAt(1, {150, 10});
        f.center->Redo();
        QCOMPARE(f.Counts(), (QVector<int>{1, 1, 0, 0}));
    }

    void theDeleteKeyActsInTheFocusedViewerOnly()
    {
        CenterFixture f(2, 1);
        f.DrawRectangle(0, {20, 20}, {60, 60});
        f.DrawRectangle(1, {20, 20}, {60, 60});
        f.ClickAt(0, {40, 40});
        f.Key(Qt::Key_Delete);
        QCOMPARE(f.Counts(), (QVector<int>{0, 1, 0, 0}));
    }

    void theRulerButtonOfAFrameMeasuresInEitherViewer()
    {
        CenterFixture f(2, 1);
        f.PressFrameButton(0, "Ruler");
        f.Drag(1, {20, 20}, {60, 50});
        QCOMPARE(f.Counts(), (QVector<int>{0, 1, 0, 0}));
        QCOMPARE(f.Viewer(1)->Get2DDrawableObjects()[0]->GetType(), EImageView2DDrawbleObjectType_Ruler);
    }

    void aToolButtonLeavesUndoAliveInTheViewerThatHadTheFocus()
    {
        CenterFixture f(2, 1);
        f.DrawRectangle(1, {20, 20}, {60, 60});
        f.PressFrameButton(1, "Select");
        f.Key(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(f.Counts(), (QVector<int>{0, 0, 0, 0}));
    }

    void theCentreViewAnnouncesEveryAddChangeAndDeleteWithViewImageAndObject()
    {
        CenterFixture f(2, 1);
        QStringList lines;
        const auto told = [&lines](const char* szWhat) {
            return [&lines, szWhat](int nView, unsigned int nImage, unsigned int nObject) {
                lines << QString::asprintf("%s %d %u %u", szWhat, nView, nImage, nObject);
            };
        };
        const auto* pCentre = f.centerView.get();
        connect(pCentre, &CCenterView::signal_AddDrawableObjectWithViewID, this,
                [&](int nView, unsigned int nImage, unsigned int nObject, const QString& strName) {
                    lines << QString::asprintf("add %d %u %u ", nView, nImage, nObject) + strName;
                });
        connect(pCentre, &CCenterView::signal_BeforeDeleteDrawableObjectWithViewID, this, told("before"));
        connect(pCentre, &CCenterView::signal_DeleteDrawableObjectWithViewID, this, told("delete"));
        connect(pCentre, &CCenterView::signal_ChangeDrawableObjectPropertyWithViewID, this, told("change"));
        for (int nView : {1, 0}) {
            const unsigned int nImage = f.Ctrl(nView)->GetImageID();
            f.DrawRectangle(nView, {20, 20}, {60, 60});
            const auto pObject = f.Viewer(nView)->Get2DDrawableObjects().at(0);
            const QString strIDs = QString::asprintf(" %d %u %u", nView, nImage, pObject->GetUID());
            QCOMPARE(lines,
                     QStringList{QStringLiteral("add") + strIDs + QLatin1Char(' ') + pObject->GetName()});
            lines.clear();
            f.Drag(nView, {40, 40}, {70, 50});
            QVERIFY(lines.size() >= 2); // the grip and the moves
            QCOMPARE(QSet<QString>(lines.begin(), lines.end()),
                     QSet<QString>{QStringLiteral("change") + strIDs});
            lines.clear();
            f.Key(Qt::Key_Delete);
            QCOMPARE(lines,
                     (QStringList{QStringLiteral("before") + strIDs, QStringLiteral("delete") + strIDs}));
            lines.clear();
            f.Key(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(lines.filter(QStringLiteral("add")).size(), 1);
            lines.clear();
        }
        QVERIFY(f.Ctrl(0)->GetImageID() != f.Ctrl(1)->GetImageID());
    }

    void anObjectIsAnnouncedAsChangedOncePerChangeAlsoAfterUndoAndRedo()
    {
        CenterFixture f(2, 1);
        f.DrawRectangle(0, {20, 20}, {60, 60});
        for (int i = 0; i < 3; ++i) {
            f.Key(Qt::Key_Z, Qt::ControlModifier);
            f.Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        }
        int nChanges = 0;
        connect(f.centerView.get(), &CCenterView::signal_ChangeDrawableObjectPropertyWithViewID, this,
                [&] { ++nChanges; });
        f.Viewer(0)->Get2DDrawableObjects().at(0)->SetSelected(false);
        QCOMPARE(nChanges, 1);
    }
};

VANTOR_TEST_MAIN(tst_TwoViewers)
#include "tst_TwoViewers.moc"
