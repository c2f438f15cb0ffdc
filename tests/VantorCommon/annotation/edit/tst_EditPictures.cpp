// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// What a person sees while drawing and selecting. With VANTOR_PICTURES set to a folder the pictures are
// written there.
#include <tests/support/EditFixture.h>
#include <tests/support/TestMain.h>

#include <QDir>

class tst_EditPictures : public QObject
{
    Q_OBJECT

private:
    /// Counts the pixels of a colour in the view as painted, and keeps the picture if it is wanted.
    static int Count(EditFixture& f, const QColor& color, const char* szPicture)
    {
        const QImage picture = f.view->grab().toImage().convertToFormat(QImage::Format_RGB32);
        const QString strFolder = qEnvironmentVariable("VANTOR_PICTURES");
        if (!strFolder.isEmpty() && QDir().mkpath(strFolder))
            picture.save(strFolder + QLatin1Char('/') + QLatin1String(szPicture) + QStringLiteral(".png"));
        int nCount = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                nCount += picture.pixelColor(x, y) == color ? 1 : 0;
        return nCount;
    }
    static void ShowGrey(EditFixture& f)
    {
        const auto pImage = MakeTestImage(200, 150, 1);
        for (int y = 0; y < 150; ++y)
            for (int x = 0; x < 200; ++x)
                *pImage->GetPixel(x, y) = static_cast<unsigned char>(40 + (x + y) / 3);
        f.images.SetImages({pImage});
    }

private Q_SLOTS:
    void aShapeIsGreenWhileItIsDrawnAndRedWithItsNameAfter_data()
    {
        QTest::addColumn<QByteArray>("button");
        for (const char* szButton : {"Rect", "Ellipse", "Circle", "Ruler"})
            QTest::newRow(szButton) << QByteArray(szButton);
    }
    void aShapeIsGreenWhileItIsDrawnAndRedWithItsNameAfter()
    {
        QFETCH(QByteArray, button);
        EditFixture f;
        ShowGrey(f);
        if (button == "Ruler")
            f.ctrl->slot_DrawRuler();
        else
            f.Choose(button.constData());
        f.Move({50, 50});
        f.Press({90, 70});
        f.Move({140, 110});
        QVERIFY(Count(f, QColor(0, 255, 0), (button.toLower() + "-drawn").constData()) > 30);
        f.Release({140, 110});
        QVERIFY(Count(f, QColor(255, 0, 0), (button.toLower() + "-done").constData()) > 30);
        QVERIFY(Count(f, QColor(255, 255, 255), (button.toLower() + "-done").constData()) > 20); // the label
    }

    void aPolygonShowsItsEdgesAndARubberSegmentToTheMouse()
    {
        EditFixture f;
        ShowGrey(f);
        f.Choose("Polygon");
        for (const QPointF& point : {QPointF(40, 40), QPointF(140, 30), QPointF(160, 100)}) {
            f.Move(point);
            f.Click(point);
        }
        f.Move({159, 101});
        const int nShort = Count(f, QColor(0, 255, 0), "polygon-edges");
        f.Move({60, 120});
        QVERIFY(Count(f, QColor(0, 255, 0), "polygon-rubber") > nShort + 50);
        f.Click({60, 120});
        f.Click({40, 40});
        QVERIFY(Count(f, QColor(255, 0, 0), "polygon-done") > 100);
    }

    void handlesAreSeenAndThePullIsLive()
    {
        EditFixture f;
        ShowGrey(f);
        f.AddRectangle(60, 40, 60, 50);
        QVERIFY(Count(f, QColor(0, 255, 0), "handles") > 100);
        f.Move({121, 91});
        f.Press({120, 90});
        f.Move({150, 120});
        QVERIFY(Count(f, QColor(255, 0, 0), "pulled") > 100);
        f.Release({150, 120});
    }

    void aRubberBandOverThreeShapesShowsThemRed()
    {
        EditFixture f;
        ShowGrey(f);
        f.AddRectangle(30, 40, 40, 30);
        f.Add(std::make_shared<Vantor::Geometry::CEllipse>(90, 30, 50, 40));
        f.Add(std::make_shared<Vantor::Geometry::CEllipse>(60, 95, 30, 30));
        f.AddRectangle(150, 110, 40, 30);
        f.Move({15, 20});
        f.Press({15, 20});
        f.Move({145, 130});
        QVERIFY(Count(f, QColor(0, 255, 0), "band-of-three") > 100);
        f.Release({145, 130});
        QCOMPARE(f.Selected().size(), std::size_t(3));
        QVERIFY(Count(f, QColor(255, 0, 0), "three-selected") > 100);
        QVERIFY(Count(f, QColor(0, 255, 0), "three-selected") > 30); // the one outside
    }
};

VANTOR_TEST_MAIN(tst_EditPictures)
#include "tst_EditPictures.moc"
