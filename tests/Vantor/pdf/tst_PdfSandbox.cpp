// SPDX-License-Identifier: MIT
// Copyright (c) The Vantor authors
//
// What the program that reads documents can still do, tried by a probe: before it enters the sandbox, and in
// it.
#include "tests/support/TestMain.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <sys/syscall.h>
#include <unistd.h>

namespace
{
QMap<QString, QString> Probe(bool bFree)
{
    const QTemporaryDir folder;
    for (const char* pName : {"private", "victim", "other"}) {
        QFile file(folder.filePath(QString::fromLatin1(pName)));
        if (!file.open(QIODevice::WriteOnly) || file.write("text") != 4)
            return {};
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (bFree)
        environment.insert(QStringLiteral("VANTOR_PROBE_FREE"), QStringLiteral("1"));
    QProcess probe;
    probe.setProcessEnvironment(environment);
    probe.start(QCoreApplication::applicationDirPath() + QStringLiteral("/sandbox_probe"), {folder.path()});
    if (!probe.waitForFinished())
        return {};
    QMap<QString, QString> mapAnswers;
    for (const QString& strLine : QString::fromUtf8(probe.readAllStandardOutput()).split(QLatin1Char('\n'))) {
        const QString strName = strLine.section(QLatin1Char(' '), 0, 0);
        if (!strName.isEmpty() && !mapAnswers.contains(strName)) // what it could at first
            mapAnswers.insert(strName, strLine.section(QLatin1Char(' '), 1));
    }
    return mapAnswers;
}

bool HasLandlock()
{
    return ::syscall(SYS_landlock_create_ruleset, nullptr, 0, 1) > 0;
}
} // namespace

class tst_PdfSandbox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsForbiddenIsPossibleBefore()
    {
        const QMap<QString, QString> mapAnswers = Probe(true);
        for (const char* pName : {"read-private", "read-system", "read-fonts", "write-open-file",
                                  "write-file", "make-file", "make-folder", "remove-file", "rename-file",
                                  "shorten-file", "socket", "local-socket", "kill-host", "fork", "thread"})
            QVERIFY2(mapAnswers.value(QString::fromLatin1(pName)) == QStringLiteral("yes"), pName);
    }

    void readingTheSystemAndThreadsAreAllThatStays()
    {
        const QMap<QString, QString> mapAnswers = Probe(false);
        QCOMPARE(mapAnswers.size(), 18);
        QStringList lstPossible;
        for (auto it = mapAnswers.begin(); it != mapAnswers.end(); ++it)
            if (it.value() == QStringLiteral("yes"))
                lstPossible << it.key();
        QStringList lstExpected{QStringLiteral("read-fonts"), QStringLiteral("read-system"),
                                QStringLiteral("thread")};
        if (!HasLandlock()) // a kernel without it keeps nobody from reading
            lstExpected << QStringLiteral("read-host") << QStringLiteral("read-private");
        lstExpected.sort();
        QCOMPARE(lstPossible, lstExpected);
    }
};

VANTOR_CORE_TEST_MAIN(tst_PdfSandbox)
#include "tst_PdfSandbox.moc"
