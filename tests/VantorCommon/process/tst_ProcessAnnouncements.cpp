// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "ToolBench.h"
#include "tests/support/TestMain.h"

namespace
{
/// The announcements of a tool, in order.
class Listener
{
public:
    explicit Listener(CImage2DProcessBaseCtrl& ctrl)
    {
        using C = CImage2DProcessBaseCtrl;
        QObject::connect(&ctrl, &C::signal_Started, &m_context,
                         [this] { m_lines << QStringLiteral("start"); });
        QObject::connect(&ctrl, &C::signal_Ended, &m_context, [this] { m_lines << QStringLiteral("end"); });
        QObject::connect(&ctrl, &C::signal_Failed, &m_context,
                         [this](const QString& strReason) { m_lines << strReason; });
    }
    QStringList Take() { return std::exchange(m_lines, {}); }

private:
    QObject m_context;
    QStringList m_lines;
};

QPushButton* ButtonOf(QWidget& dialog, const char* pText)
{
    for (auto* pButton : dialog.findChildren<QPushButton*>())
        if (pButton->text() == QLatin1String(pText))
            return pButton;
    return nullptr;
}
} // namespace

class tst_ProcessAnnouncements : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QVERIFY(CMVCManager::m_vctItems.empty()); }

    void aGoodRunIsAnnouncedFromStartToEnd()
    {
        ToolBench<MedianTool> b;
        Listener listener(b.ctrl);
        b.ctrl.slot_Run();
        QCOMPARE(listener.Take(), (QStringList{QStringLiteral("start"), QStringLiteral("end")}));
        QCOMPARE(b.ctrl.GetFailureReason(), QString());
    }

    void aRunWithoutAnImageFailsBeforeItStarts()
    {
        ToolBench<SobelTool> b;
        Listener listener(b.ctrl);
        b.fixture.Ctrl(0)->CloseCurrentImage();
        b.ctrl.slot_Run();
        QCOMPARE(listener.Take(), QStringList{QStringLiteral("The source viewer shows no image.")});
    }

    void aRunThatTheCoreRefusesEndsAndTellsWhy()
    {
        ToolBench<MedianTool> b;
        Listener listener(b.ctrl);
        const auto pDeep = std::make_shared<Vantor::Algorithms::CImage>();
        QCOMPARE(pDeep->Create(8, 8, 1, 16, Vantor::Algorithms::EImageType::Interleaved, 1), 0);
        b.SetImage(pDeep);
        b.ctrl.slot_Run();
        QCOMPARE(listener.Take(),
                 (QStringList{QStringLiteral("start"), QStringLiteral("end"), b.ctrl.GetFailureReason()}));
        QVERIFY(!b.ctrl.GetFailureReason().isEmpty());
    }

    void theCentreRelaysItsToolsUnderTheirTitles()
    {
        CenterFixture f(1, 1);
        QStringList lines;
        using C = CCenterCtrl;
        connect(f.center.get(), &C::signal_ProcessStarted, this,
                [&](const QString& strTool) { lines << strTool + QStringLiteral(" started"); });
        connect(f.center.get(), &C::signal_ProcessEnded, this,
                [&](const QString& strTool) { lines << strTool + QStringLiteral(" ended"); });
        connect(f.center.get(), &C::signal_ProcessFailed, this,
                [&](const QString& strTool, const QString& strReason) {
                    lines << strTool + QStringLiteral(": ") + strReason;
                });
        f.center->slot_OpenSobelTool();
        f.center->slot_OpenSobelTool(); // shown again, not connected again
        auto* pDlg = f.centerView->findChild<CImage2DProcessSobelDlg*>();
        QVERIFY(pDlg);
        QPushButton* pRun = ButtonOf(*pDlg, "Run");
        QVERIFY(pRun);
        pRun->click();
        f.Ctrl(0)->CloseCurrentImage();
        pRun->click();
        QCOMPARE(lines,
                 (QStringList{QStringLiteral("Sobel Filter started"), QStringLiteral("Sobel Filter ended"),
                              QStringLiteral("Sobel Filter: The source viewer shows no image.")}));
    }
};

VANTOR_TEST_MAIN(tst_ProcessAnnouncements)
#include "tst_ProcessAnnouncements.moc"
