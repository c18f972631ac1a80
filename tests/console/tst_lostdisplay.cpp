// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace
{

constexpr int longWait = 120000;
constexpr int displays = 10; // how often a display is lost, writing and idle

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// An X server of its own.
class Display
{
public:
    Display()
    {
        _server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        _server.start(QStringLiteral("Xvfb"),
                      {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-nolisten"),
                       QStringLiteral("tcp"), QStringLiteral("-noreset")});
        while (!_number.endsWith('\n') && _server.waitForReadyRead(longWait))
            _number += _server.readAllStandardOutput();
    }
    QString name() const { return QLatin1Char(':') + QString::fromLatin1(_number.trimmed()); }
    bool isUp() const { return _number.endsWith('\n'); }
    void end()
    {
        _server.kill();
        _server.waitForFinished(longWait);
    }

private:
    QProcess _server;
    QByteArray _number;
};

/// The console of lostdisplaychild.cpp, with a plug-in that brings an editor, on a display of its own.
class Child
{
public:
    explicit Child(const QString &doing)
        : _file(_folder.filePath(QStringLiteral("notes")))
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("DISPLAY"), _display.name());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        environment.insert(QStringLiteral("HOME"), _folder.path());
        environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
        _process.setProcessEnvironment(environment);
        _process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        const QString programs = QCoreApplication::applicationDirPath();
        if (_display.isUp())
            _process.start(programs + QStringLiteral("/lostdisplaychild"),
                           {doing, _file, programs + QStringLiteral("/../tests/sample/note")});
    }
    Child(const Child &) = delete;
    Child &operator=(const Child &) = delete;
    ~Child()
    {
        _process.kill();
        _process.waitForFinished();
    }

    QByteArray notes() const { return contentOf(_file); }
    /// Empty once the child wrote that. Else why it never will.
    QString whyNotCameTo(const QByteArray &notes)
    {
        if (!_display.isUp())
            return QStringLiteral("the X server did not start");
        if (!_process.waitForStarted(longWait))
            return QStringLiteral("%1 did not start: %2").arg(_process.program(), _process.errorString());
        const bool ended = !QTest::qWaitFor(
            [&] { return _process.state() == QProcess::NotRunning || contentOf(_file) == notes; }, longWait);
        if (contentOf(_file) == notes)
            return {};
        return QStringLiteral("the child %1 and wrote \"%2\"")
            .arg(ended ? QStringLiteral("still runs") : how(), QString::fromUtf8(contentOf(_file)));
    }
    void loseDisplay() { _display.end(); }
    void letTheWriteGoOn() const
    {
        QFile go(_file + QStringLiteral(".go"));
        QVERIFY(go.open(QIODevice::WriteOnly));
    }
    /// How it ended.
    QString ending()
    {
        if (_process.state() != QProcess::NotRunning && !_process.waitForFinished(longWait))
            return QStringLiteral("still runs");
        return how();
    }

private:
    QString how() const
    {
        return _process.exitStatus() == QProcess::NormalExit ? QStringLiteral("ended with %1").arg(_process.exitCode())
                                                             : QStringLiteral("crashed");
    }

    Display _display;
    const QTemporaryDir _folder;
    const QString _file;
    QProcess _process;
};

} // namespace

/// What becomes of the console when its X server ends.
class LostDisplayTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theWriteIsFinished();
    void anIdleConsoleEnds();
};

void LostDisplayTest::theWriteIsFinished()
{
    for (int i = 0; i < displays; ++i) {
        Child child(QStringLiteral("write"));
        QCOMPARE(child.whyNotCameTo("store used\nbegin\n"), QString());
        child.loseDisplay();
        child.letTheWriteGoOn();
        QCOMPARE(child.ending(), QStringLiteral("ended with 1"));
        QCOMPARE(child.notes(), QByteArray("store used\nbegin\nstore used\nend\n"));
    }
}

void LostDisplayTest::anIdleConsoleEnds()
{
    for (int i = 0; i < displays; ++i) {
        Child child(QStringLiteral("idle"));
        QCOMPARE(child.whyNotCameTo("idle\n"), QString());
        child.loseDisplay();
        QCOMPARE(child.ending(), QStringLiteral("ended with 1"));
    }
}

QTEST_GUILESS_MAIN(LostDisplayTest)
#include "tst_lostdisplay.moc"
