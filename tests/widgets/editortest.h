// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include "editedelement.h"
#include "formwidget.h"

#include <QtTest>

/// What the test of an editor stands on: the editor, on the screen and with the keyboard, its element, and a module
/// that notes what it is asked.
template<typename Editor, typename AskedModule = RecordingModule>
class EditorTest
{
protected:
    void openEditor(const QString &elementType)
    {
        _module = std::make_unique<AskedModule>();
        _element = std::make_unique<EditedElement>(elementType, _module.get());
        openEditor(&everybodyMay);
    }
    /// Another editor of the same element.
    void openEditor(Element::AccessCheck access)
    {
        _widget = std::make_unique<Editor>(_module.get(), access);
        _widget->setElement(_element.get());
        _widget->show();
        _widget->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(_widget.get()));
    }
    void closeEditor()
    {
        _widget.reset();
        _element.reset();
        _module.reset();
    }
    template<typename Widget>
    Widget *find(const char *name) const
    {
        return formWidget<Widget>(*_widget, name);
    }

    std::unique_ptr<AskedModule> _module;
    std::unique_ptr<Element> _element;
    std::unique_ptr<Editor> _widget;
};
