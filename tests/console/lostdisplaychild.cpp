// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

// The console's window with the page of a plug-in, idle or over a write that takes its time. What happens is appended
// to a file, for tst_lostdisplay.
//
//     lostdisplaychild idle|write FILE PLUGINS
//
// The write goes on as soon as there is a file FILE.go.

#include <elementpages.h>
#include <mainwindow.h>
#include <session.h>
#include <startup.h>
#include <taskobserver.h>

#include <QApplication>
#include <QFile>
#include <QTimer>

#include <chrono>
#include <thread>

namespace
{

QString &fileName()
{
    static auto *name = new QString;
    return *name;
}

void note(const char *line)
{
    QFile file(fileName());
    if (file.open(QIODevice::Append))
        file.write(QByteArray(line) + '\n');
}

/// What a back end keeps in a static object, made when it is first needed.
class Store
{
public:
    Store() = default;
    Store(const Store &) = delete;
    Store &operator=(const Store &) = delete;
    ~Store() { note("store destroyed"); }
    void use() const { note("store used"); }
};

const Store &store()
{
    static const Store theStore;
    return theStore;
}

class SlowWrite : public AbstractTask
{
public:
    bool changesMachine() const override { return true; }
    void run() override
    {
        store().use();
        note("begin");
        while (!QFile::exists(fileName() + QStringLiteral(".go")))
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        // Long enough for a process that does not wait to be gone.
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        store().use();
        note("end");
        AbstractTask::run();
    }
};

} // namespace

int main(int argc, char *argv[])
{
    Startup::ignoreBrokenPipes();
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    fileName() = arguments.value(2);
    Session session;
    session.loadPlugins({arguments.value(3)});
    MainWindow window(session);
    window.show();
    auto *pages = window.findChild<ElementPages *>();
    for (TreeNode *node : session.tree().rootNode()->allChildNodes()) {
        if (node->id() == QLatin1String("SampleNoteElement"))
            pages->setCurrentElement(dynamic_cast<Element *>(node));
    }
    if (arguments.value(1) == QLatin1String("write"))
        TaskObserver::instance()->performTask(new SlowWrite);
    else if (pages->currentEditor())
        QTimer::singleShot(0, &window, [] { note("idle"); });
    return QApplication::exec();
}
