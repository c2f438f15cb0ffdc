// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include <VantorCommon/annotation/object/CImageView2DDrawableText.h>
#include <VantorCommon/annotation/object/ShapeKinds.h>
#include <VantorCommon/shell/center/SCenterOptions.h>
#include <tests/support/EditFixture.h>
#include <tests/support/TestMain.h>

#include <QLineEdit>
#include <QPlainTextEdit>
#include <cmath>

namespace
{
/// An editing bench whose panel has the button of texts.
class CNotes : public EditFixture
{
public:
    CNotes()
    {
        SCenterOptions sOptions;
        sOptions.bMoreShapes = true;
        ctrl->SetOptions(sOptions);
        QCoreApplication::processEvents(); // lays the buttons out
    }
    QPlainTextEdit* Editor() const
    {
        for (QPlainTextEdit* pEditor : view->findChildren<QPlainTextEdit*>())
            if (pEditor->isVisible())
                return pEditor;
        return nullptr;
    }
    /// Opens an editor for a new text.
    void Begin(const QPointF& point)
    {
        Choose("Text");
        Click(point);
        QVERIFY(Editor());
        QTRY_VERIFY(Editor()->hasFocus());
    }
    void Type(const char* szText)
    {
        for (const char* pLetter = szText; *pLetter; ++pLetter)
            if (*pLetter == '\n')
                Key(Qt::Key_Return);
            else
                QTest::keyClick(Window(), *pLetter);
    }
    void CtrlEnter() { Key(Qt::Key_Return, Qt::ControlModifier); }
    void DoubleClick(const QPointF& point)
    {
        QTest::mouseDClick(Window(), Qt::LeftButton, Qt::NoModifier, Pixel(point));
    }
    CImageView2DDrawableText* Text(int nIndex = 0) const
    {
        return dynamic_cast<CImageView2DDrawableText*>(geometry.GetAt(nIndex).get());
    }
    void Write(const QPointF& point, const char* szText)
    {
        Begin(point);
        Type(szText);
        CtrlEnter();
        QVERIFY(Text());
    }
};

const QString kHello = QStringLiteral("hello");
} // namespace

class tst_TextNotes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aClickOpensAnEditorWhereEnterEndsALineAndCtrlEnterTheText()
    {
        CNotes f;
        f.Begin({50, 40});
        QCOMPARE(f.tool.GetViewMode(), EImageView2DMode_Selecting);
        QCOMPARE(f.geometry.Size(), 0);
        f.Type("one\ntwo");
        QVERIFY(f.Editor());
        f.CtrlEnter();
        QVERIFY(!f.Editor());
        QCOMPARE(f.geometry.Size(), 1);
        QCOMPARE(f.Text()->GetText(), QStringLiteral("one\ntwo"));
        QCOMPARE(f.Text()->GetPosition(), QPointF(50, 40));
        QVERIFY(f.Text()->GetSelected());
        QVERIFY(f.view->hasFocus());
    }

    void addingIsOneStepThatIsUndoneAndRedone()
    {
        CNotes f;
        f.Write({50, 40}, "hello");
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 0);
        f.PressRedo();
        QCOMPARE(f.geometry.Size(), 1);
        QCOMPARE(f.Text()->GetText(), kHello);
        QVERIFY(!f.Editor());
    }

    void aClickOutsideEndsTheEditing()
    {
        CNotes f;
        f.Begin({20, 10});
        f.Type("hello");
        f.Click({190, 140});
        QVERIFY(!f.Editor());
        QCOMPARE(f.geometry.Size(), 1);
        QCOMPARE(f.Text()->GetText(), kHello);
        QVERIFY(!f.Text()->GetSelected()); // the click acted, too
    }

    void aClickInsideDoesNot()
    {
        CNotes f;
        f.Begin({20, 10});
        f.Type("hello");
        const QPoint inside = f.Editor()->mapTo(f.view->window(), f.Editor()->rect().center());
        QTest::mouseClick(f.Window(), Qt::LeftButton, Qt::NoModifier, inside);
        QVERIFY(f.Editor());
        QCOMPARE(f.geometry.Size(), 0);
    }

    void theLossOfTheFocusEndsTheEditing()
    {
        CNotes f;
        QLineEdit other(&f.host);
        other.setGeometry(420, 380, 100, 30);
        other.show();
        f.Begin({20, 10});
        f.Type("hello");
        other.setFocus();
        QVERIFY(!f.Editor());
        QCOMPARE(f.geometry.Size(), 1);
        QVERIFY(other.hasFocus());
    }

    void escapeGivesANewTextUp()
    {
        CNotes f;
        f.Begin({20, 10});
        f.Type("hello");
        f.Key(Qt::Key_Escape);
        QVERIFY(!f.Editor());
        QCOMPARE(f.geometry.Size(), 0);
        QVERIFY(!f.ctrl->CanUndo());
    }

    void aTextOfBlanksIsNotAdded()
    {
        CNotes f;
        f.Begin({20, 10});
        f.Type(" \n ");
        f.CtrlEnter();
        QCOMPARE(f.geometry.Size(), 0);
        QVERIFY(!f.ctrl->CanUndo());
    }

    void aDoubleClickEditsATextAsOneStep()
    {
        CNotes f;
        f.Write({50, 40}, "hello");
        const QPointF inside = f.Text()->GetBoundary().center();
        f.DoubleClick(inside);
        QVERIFY(f.Editor());
        QCOMPARE(f.Editor()->toPlainText(), kHello);
        f.Type("bye"); // all of it was selected
        f.CtrlEnter();
        QCOMPARE(f.Text()->GetText(), QStringLiteral("bye"));
        f.PressUndo();
        QCOMPARE(f.Text()->GetText(), kHello);
        f.PressRedo();
        QCOMPARE(f.Text()->GetText(), QStringLiteral("bye"));
        f.DoubleClick(inside);
        f.CtrlEnter(); // nothing changed: no step
        f.PressUndo();
        QCOMPARE(f.Text()->GetText(), kHello);
    }

    void aTextThatLosesItsLettersIsDeletedUndoably()
    {
        CNotes f;
        f.Write({50, 40}, "hello");
        f.DoubleClick(f.Text()->GetBoundary().center());
        f.Key(Qt::Key_Delete);
        f.CtrlEnter();
        QCOMPARE(f.geometry.Size(), 0);
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 1);
        QCOMPARE(f.Text()->GetText(), kHello);
    }

    void escapeLeavesATextAsItWas()
    {
        CNotes f;
        f.Write({50, 40}, "hello");
        f.DoubleClick(f.Text()->GetBoundary().center());
        f.Type("bye");
        f.Key(Qt::Key_Escape);
        QCOMPARE(f.Text()->GetText(), kHello);
    }

    void aDoubleClickBesideATextIsNothing()
    {
        CNotes f;
        f.Write({50, 40}, "hello");
        f.DoubleClick({180, 140});
        QVERIFY(!f.Editor());
    }

    void aTextIsSelectedMovedAndDeletedLikeAnyOther()
    {
        CNotes f;
        f.Write({50, 40}, "hello");
        const QPointF inside = f.Text()->GetBoundary().center();
        f.Click({190, 140});
        QVERIFY(!f.Text()->GetSelected());
        f.Drag(inside, inside + QPointF(20, 30));
        QVERIFY(f.Text()->GetSelected());
        QCOMPARE(f.Text()->GetPosition(), QPointF(70, 70));
        f.PressUndo();
        QCOMPARE(f.Text()->GetPosition(), QPointF(50, 40));
        f.PressRedo();
        QCOMPARE(f.Text()->GetPosition(), QPointF(70, 70));
        f.Key(Qt::Key_Delete);
        QCOMPARE(f.geometry.Size(), 0);
        f.PressUndo();
        QCOMPARE(f.geometry.Size(), 1);
    }

    void aMoveThatIsGivenUpPutsTheTextBack()
    {
        CNotes f;
        f.Write({50, 40}, "hello");
        const QPointF inside = f.Text()->GetBoundary().center();
        f.Move(inside);
        f.Press(inside);
        f.Move(inside + QPointF(30, 30));
        QCOMPARE(f.Text()->GetPosition(), QPointF(80, 70));
        f.Key(Qt::Key_Escape);
        QCOMPARE(f.Text()->GetPosition(), QPointF(50, 40));
        f.Release(inside);
    }

    void aRubberBandCatchesATextWithLettersOnly()
    {
        CNotes f;
        f.Write({50, 40}, "hello");
        f.geometry.AddObject(std::make_shared<CImageView2DDrawableText>());
        f.geometry.UnSelectedAll();
        f.Drag({2, 2}, {60, 50});
        QVERIFY(f.Text(1)->GetSelected());
        QVERIFY(!f.Text(0)->GetSelected());
    }

    void anotherImageEndsTheEditingWithoutAText()
    {
        CNotes f;
        f.Begin({20, 10});
        f.Type("hello");
        f.ctrl->SetCurrentImage(MakeTestImage(200, 150, 1));
        QVERIFY(!f.Editor());
        QCOMPARE(f.geometry.Size(), 0);
    }

    void aTextThatIsGoneMeanwhileStaysGone()
    {
        CNotes f;
        f.Write({50, 40}, "hello");
        f.DoubleClick(f.Text()->GetBoundary().center());
        f.Type("bye");
        f.ctrl->DeleteDrawableObject(f.Text()->GetUID());
        f.CtrlEnter();
        QCOMPARE(f.geometry.Size(), 0);
    }

    void theControllerMayDieInTheMiddle()
    {
        CNotes f;
        f.Begin({20, 10});
        f.Type("hello");
        f.ctrl.reset();
        QVERIFY(!f.Editor());
        QCOMPARE(f.geometry.Size(), 0);
    }

    void aNewTextHasTheSizeOfLabelsAtThePresentZoom()
    {
        CNotes f; // two widget pixels for an image pixel
        f.Write({50, 40}, "hello");
        QCOMPARE(f.Text()->GetLineHeight(), 12.0);
        const QRectF box = f.Text()->GetBoundary();
        QCOMPARE(box.height(), 12.0);
        QVERIFY(box.width() > 15.0 && box.width() < 40.0);
        f.Text()->SetText(QStringLiteral("hello\nhello"));
        QCOMPARE(f.Text()->GetBoundary().size(), QSizeF(box.width(), 24.0));
    }

    void itIsPaintedInItsBoxAndTellsTheSelection()
    {
        CNotes f;
        const QImage before = f.view->grab().toImage();
        f.Write({50, 40}, "HH");
        const auto differs = [&] {
            const QImage now = f.view->grab().toImage();
            QRect changed;
            for (int y = 0; y < now.height(); ++y)
                for (int x = 0; x < now.width(); ++x)
                    if (now.pixel(x, y) != before.pixel(x, y))
                        changed |= QRect(x, y, 1, 1);
            return changed;
        };
        const QRect box = f.view->MapToWidget(f.Text()->GetBoundary()).toAlignedRect();
        QVERIFY(box.adjusted(-2, -2, 2, 2).contains(differs()));
        QVERIFY(differs().width() >= box.width() - 2);
        // Letters are smoothed: what is more of one colour than of the other.
        const auto count = [&](bool bRed) {
            const QImage now = f.view->grab().toImage();
            int nCount = 0;
            for (int y = box.top(); y <= box.bottom(); ++y)
                for (int x = box.left(); x <= box.right(); ++x) {
                    const QColor color = now.pixelColor(x, y);
                    nCount += (bRed ? color.red() - color.green() : color.green() - color.red()) > 120;
                }
            return nCount;
        };
        QVERIFY(count(true) > 40);
        QVERIFY(count(false) < 10);
        f.Text()->SetSelected(false);
        QVERIFY(count(false) > 20);
        QVERIFY(count(true) < 10);
    }

    void whatIsNotFiniteIsIgnored()
    {
        CImageView2DDrawableText text;
        text.SetPosition(QPointF(NAN, 1));
        text.SetPosition(QPointF(1, INFINITY));
        QCOMPARE(text.GetPosition(), QPointF());
        for (double bad : {0.0, -1.0, double(NAN), double(INFINITY)})
            text.SetLineHeight(bad);
        QCOMPARE(text.GetLineHeight(), 16.0);
    }
};

VANTOR_TEST_MAIN(tst_TextNotes)
#include "tst_TextNotes.moc"
