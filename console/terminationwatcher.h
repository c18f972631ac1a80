// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <QObject>

class QSocketNotifier;

/// Turns SIGTERM, SIGINT and SIGHUP into a Qt signal, so that the end of a login session closes the console in order
/// and never in the middle of a write. One for the process, while the application object lives.
class TerminationWatcher : public QObject
{
    Q_OBJECT

public:
    explicit TerminationWatcher(QObject *parent = nullptr);
    /// The signals have their usual effect again.
    ~TerminationWatcher() override;

Q_SIGNALS:
    void terminationRequested();

private:
    QSocketNotifier *_notifier = nullptr;
};
