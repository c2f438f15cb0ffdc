// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CEmptyHint.h"
#include "WorkSupport.h"
#include "tests/support/TestMain.h"

namespace
{
class CHintHost : public Host
{
public:
    CEmptyHint* Hint(int nView) const { return View(nView)->findChild<CEmptyHint*>(); }
    /// Clicks a link as the label tells of it.
    void Click(int nView, int nLink) const { Q_EMIT Hint(nView)->linkActivated(QString::number(nLink)); }
};
} // namespace

class tst_CEmptyHint : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { Host::ForgetSettings(); }

    void anEmptyViewerSaysWhatCanBeDone()
    {
        CHintHost host;
        QVERIFY(host.Show());
        QVERIFY(host.Hint(0)->isVisible());
        QVERIFY(host.Hint(0)->text().contains(QLatin1String("Drop files here or press Ctrl+O")));
        QVERIFY(host.View(0)->rect().contains(host.Hint(0)->geometry()));
        QVERIFY((host.Hint(0)->geometry().center() - host.View(0)->rect().center()).manhattanLength() <= 2);
        host.Entry("File", "Open...")->setShortcuts(QList<QKeySequence>());
        QVERIFY(host.Hint(0)->text().contains(QLatin1String("Drop files here</big>")));
    }

    void itIsThereOnlyWithoutAnImage()
    {
        CHintHost host;
        QVERIFY(host.Show({kPhoto}));
        QVERIFY(host.Hint(0)->isHidden());
        host.Entry("File", "Close Image")->trigger();
        QVERIFY(host.Hint(0)->isVisible());
    }

    void itIsNotThereWhileAFileIsBeingOpened()
    {
        CHintHost host;
        host.SetBackground(true);
        QVERIFY(host.Show());
        host.window.StartOpening({kPhoto}, QString());
        QVERIFY(host.Hint(0)->isHidden());
        QTRY_VERIFY(host.View(0)->GetImageUID() != 0xFFFFFFFFu);
        QVERIFY(host.Hint(0)->isHidden());
        host.window.StartOpening({QStringLiteral("/nowhere/x.png")}, QString());
        host.Entry("File", "Close All Images")->trigger();
        QTRY_VERIFY(host.Hint(0)->isVisible());
    }

    void aClickOpensARecentFileInThatViewer()
    {
        const Pictures files;
        const QString strFirst = files.Add(QStringLiteral("<b>a&b.png"));
        const QString strSecond = files.Add(QStringLiteral("c.png"));
        CHintHost host;
        QVERIFY(host.Show());
        QVERIFY(host.window.ChangeLayout(QStringLiteral("2x2")));
        QCOMPARE(host.window.OpenFiles({strFirst, strSecond}, QStringLiteral("2x2")), 2);
        QVERIFY(host.Hint(3)->text().contains(QLatin1String("color:black\">&lt;b&gt;a&amp;b.png</a>")));
        host.Click(3, 1);
        QCOMPARE(host.Hint(3)->isVisible(), false);
        QCOMPARE(CtrlOf(host, 3)->GetImageModel()->GetImageCount(), 1);
        QVERIFY(host.window.windowTitle().startsWith(QLatin1String("<b>a&b.png")));
        host.Click(2, 99); // there is none
        QVERIFY(host.Hint(2)->isVisible());
    }

    void itStaysWithinASmallView()
    {
        CHintHost host;
        QVERIFY(host.Show({kPhoto}));
        host.Entry("File", "Close Image")->trigger();
        QVERIFY(host.window.ChangeLayout(QStringLiteral("2x2")));
        host.window.resize(500, 300);
        for (int i = 0; i < 4; ++i)
            QTRY_VERIFY(host.Hint(i)->isHidden() || host.View(i)->rect().contains(host.Hint(i)->geometry()));
        host.window.resize(1000, 800);
        QTRY_VERIFY(host.Hint(3)->isVisible() && host.Hint(3)->text().contains(QLatin1String("bricks")));
    }

    void focusAndDropsStayWithTheView()
    {
        CHintHost host;
        QVERIFY(host.Show());
        QVERIFY(host.Hint(0)->focusPolicy() == Qt::NoFocus);
        QVERIFY(!host.Hint(0)->acceptDrops()); // the view gets them
    }
};

VANTOR_TEST_MAIN(tst_CEmptyHint)
#include "tst_CEmptyHint.moc"
