// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
#include "CTheme.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusVariant>
#include <cmath>

namespace
{
const auto kService = QStringLiteral("org.freedesktop.portal.Desktop");
const auto kGroup = QStringLiteral("org.freedesktop.appearance");
const auto kKey = QStringLiteral("color-scheme");

/// Relative luminance and contrast as WCAG 2.1 defines them.
double Luminance(const QColor& color)
{
    const auto linear = [](double c) {
        return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double Contrast(const QColor& a, const QColor& b)
{
    const double first = Luminance(a) + 0.05;
    const double second = Luminance(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}
} // namespace

/// A desktop's settings portal, as far as it tells of light and dark.
class CPortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    explicit CPortal(uint nScheme)
        : m_nScheme(nScheme),
          m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("portal")))
    {
        m_bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                             QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        m_bus.registerService(kService);
    }
    ~CPortal() override
    {
        m_bus.unregisterService(kService);
        QDBusConnection::disconnectFromBus(QStringLiteral("portal"));
    }
    void Change(uint nScheme)
    {
        m_nScheme = nScheme;
        Q_EMIT SettingChanged(kGroup, kKey, QDBusVariant(nScheme));
    }

public Q_SLOTS:
    /// As portals answer: the value twice wrapped.
    QDBusVariant Read(const QString& strGroup, const QString& strKey)
    {
        const bool bKnown = strGroup == kGroup && strKey == kKey;
        return QDBusVariant(QVariant::fromValue(QDBusVariant(bKnown ? m_nScheme : 99u)));
    }

Q_SIGNALS:
    void SettingChanged(const QString& strGroup, const QString& strKey, const QDBusVariant& value);

private:
    uint m_nScheme;
    QDBusConnection m_bus;
};

class tst_CTheme : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QVERIFY(QDBusConnection::sessionBus().isConnected());
        QApplication::setPalette(m_light);
        QVERIFY(!CTheme::IsDark());
    }

    void withoutAPortalTheColoursStay()
    {
        CTheme theme(CTheme::EScheme_Desktop);
        QTest::qWait(100);
        QVERIFY(QApplication::palette() == m_light);
    }

    void itFollowsTheDesktopAlsoWhenThatChanges()
    {
        CPortal portal(1);
        CTheme theme(CTheme::EScheme_Desktop);
        QTRY_VERIFY(CTheme::IsDark());
        QCOMPARE(theme.GetDesktop(), CTheme::EScheme_Dark);
        portal.Change(2);
        QTRY_VERIFY(!CTheme::IsDark());
        portal.Change(1);
        QTRY_VERIFY(CTheme::IsDark());
        portal.Change(0); // no preference
        QTRY_VERIFY(QApplication::palette() == m_light);
    }

    void whatTheDesktopPreferredLastHoldsUntilItAnswers()
    {
        CPortal portal(2);
        CTheme theme(CTheme::EScheme_Dark);
        QVERIFY(CTheme::IsDark()); // at once
        QTRY_VERIFY(!CTheme::IsDark());
    }

    void theUsersChoiceIsAboveTheDesktops()
    {
        CPortal portal(1);
        CTheme theme(CTheme::EScheme_Desktop);
        QTRY_VERIFY(CTheme::IsDark());
        theme.SetScheme(CTheme::EScheme_Light);
        QVERIFY(!CTheme::IsDark());
        portal.Change(1);
        QTest::qWait(50);
        QVERIFY(!CTheme::IsDark());
        theme.SetScheme(CTheme::EScheme_Dark);
        QVERIFY(CTheme::IsDark());
        theme.SetScheme(CTheme::EScheme_Desktop);
        QVERIFY(CTheme::IsDark());
        theme.SetScheme(77);
        QCOMPARE(theme.GetScheme(), CTheme::EScheme_Desktop);
    }

    void aDarkDesktopWhoseQtIsDarkAlreadyKeepsItsOwnColours()
    {
        QPalette own(QColor(20, 20, 60));
        QApplication::setPalette(own);
        own = QApplication::palette();
        CTheme theme(CTheme::EScheme_Dark);
        QVERIFY(QApplication::palette() == own);
        theme.SetScheme(CTheme::EScheme_Light);
        QVERIFY(!CTheme::IsDark());
    }

    void everyTextIsLegible_data()
    {
        QTest::addColumn<int>("scheme");
        QTest::newRow("light") << int(CTheme::EScheme_Light);
        QTest::newRow("dark") << int(CTheme::EScheme_Dark);
    }
    void everyTextIsLegible()
    {
        QFETCH(int, scheme);
        QApplication::setPalette(QPalette(scheme == CTheme::EScheme_Dark ? Qt::white : Qt::black));
        CTheme theme(CTheme::EScheme_Desktop);
        theme.SetScheme(scheme);
        using P = QPalette;
        const QPalette palette = QApplication::palette();
        constexpr std::pair<P::ColorRole, P::ColorRole> pairs[] = {
            {P::WindowText, P::Window},       {P::Text, P::Base},
            {P::Text, P::AlternateBase},      {P::ButtonText, P::Button},
            {P::ToolTipText, P::ToolTipBase}, {P::Link, P::Base}};
        for (const auto& [eText, eGround] : pairs)
            QVERIFY2(Contrast(palette.color(eText), palette.color(eGround)) >= 4.5,
                     qPrintable(QStringLiteral("%1 on %2").arg(eText).arg(eGround)));
        QVERIFY(Contrast(palette.color(P::HighlightedText), palette.color(P::Highlight)) >= 3.0);
        QVERIFY(Contrast(palette.color(P::Disabled, P::Text), palette.color(P::Base)) >= 2.0);
    }

    void aLightDesktopIsFollowedAlsoWhereQtIsDark()
    {
        QApplication::setPalette(QPalette(QColor(20, 20, 60)));
        QVERIFY(CTheme::IsDark());
        const CPortal portal(2);
        const CTheme theme(CTheme::EScheme_Desktop);
        QTRY_VERIFY(!CTheme::IsDark());
        QCOMPARE(theme.GetDesktop(), CTheme::EScheme_Light);
    }

private:
    const QPalette m_light = QApplication::palette();
};

int main(int argc, char* argv[])
{
    const CPrivateBus bus;
    QApplication app(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    tst_CTheme test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_CTheme.moc"
