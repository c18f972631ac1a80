#!/bin/bash
# SPDX-FileCopyrightText: 2026 The kra authors
# SPDX-License-Identifier: GPL-3.0-or-later
#
# tst_markup.sh: the check for markup accepts what is plain and refuses what is not, in forms and in sources.
set -eu -o pipefail
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0

# expect accepted|refused NAME: what becomes of the file NAME with the text of the standard input.
expect()
{
    local answer=refused
    cat >"$work/$2"
    if "$here/markup.sh" "$work/$2" >"$work/said"; then
        answer=accepted
    fi
    if [ "$answer" != "$1" ]; then
        echo "this should have been $1:"
        cat "$work/$2" "$work/said"
        failed=1
    fi
}

expect accepted plain.ui <<'TEXT'
<widget class="QLabel" name="a">
 <property name="textFormat">
  <enum>Qt::PlainText</enum>
 </property>
</widget>
TEXT
expect refused silent.ui <<'TEXT'
<widget class="QLabel" name="a">
 <property name="text">
  <string/>
 </property>
</widget>
TEXT
expect refused second.ui <<'TEXT'
<widget class="QLabel" name="a">
 <property name="textFormat">
  <enum>Qt::PlainText</enum>
 </property>
</widget>
<widget class="QLabel" name="b">
</widget>
TEXT
expect refused rich.ui <<'TEXT'
<widget class="QLabel" name="a">
 <property name="textFormat">
  <enum>Qt::RichText</enum>
 </property>
</widget>
TEXT
expect accepted plain.cpp <<'TEXT'
auto *label = new QLabel(text, parent);
label->setTextFormat(Qt::PlainText);
TEXT
expect refused label.cpp <<'TEXT'
auto *label = new QLabel(text, parent);
TEXT
expect refused oneoftwo.cpp <<'TEXT'
auto *label = new QLabel(text, parent);
label->setTextFormat(Qt::PlainText);
auto *other = new QLabel;
TEXT
expect refused box.cpp <<'TEXT'
QMessageBox::warning(this, tr("Warning"), text);
TEXT
expect refused ownbox.cpp <<'TEXT'
QMessageBox box(QMessageBox::Question, title, text);
TEXT
expect refused rich.cpp <<'TEXT'
label->setTextFormat(Qt::RichText);
TEXT
expect accepted tip.cpp <<'TEXT'
button->setToolTip(tr("Hide this message"));
edit->setToolTip(
    plainToolTip(path));
setToolTip(fits ? QString() : plainToolTip(text));
TEXT
expect refused tip2.cpp <<'TEXT'
edit->setToolTip(path);
TEXT
expect refused tip3.cpp <<'TEXT'
QToolTip::showText(place,
                   reason, field);
TEXT
exit "$failed"
