// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "kraglobal.h"

#include <QObject>
#include <QString>

#include <vector>

class Module;

/// The interface identifier of the plug-ins that this framework loads.
#define KRA_PLUGIN_IID "zel-admin-kra/0.0"

/// What a plug-in library exports: a title, a description and its modules. User-interface thread only.
///
/// A plug-in library declares its class with
///     Q_PLUGIN_METADATA(IID KRA_PLUGIN_IID)
/// The loader compares that identifier before it loads the library, constructs the class, asks isValid(), and only then
/// places its modules.
class KRA_EXPORT Plugin : public QObject
{
    Q_OBJECT

public:
    explicit Plugin(QObject *parent = nullptr);
    ~Plugin() override;

    QString title() const { return _title; }
    QString description() const { return _description; }
    /// In the order they were appended; owned as children of the plug-in.
    const std::vector<Module *> &modules() const { return _modules; }

    /// Whether the plug-in can work on this machine. The default is yes. May run programs (Process::simpleStart); what
    /// they printed is kept in the plug-in's record.
    virtual bool isValid();
    /// Why the last isValid() said no, for the administrator; empty where the plug-in did not say.
    QString whyInvalid() const { return _whyInvalid; }

protected:
    /// For isValid(): what is missing here.
    void setWhyInvalid(const QString &why) { _whyInvalid = why; }
    void setTitle(const QString &title) { _title = title; }
    void setDescription(const QString &description) { _description = description; }
    void appendModule(Module *module) { _modules.push_back(module); }

private:
    QString _title;
    QString _description;
    QString _whyInvalid;
    std::vector<Module *> _modules;
};
