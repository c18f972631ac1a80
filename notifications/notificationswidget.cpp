// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "notificationswidget.h"

#include "notificationsmanager.h"
#include "runnotes.h"
#include "ui_notificationswidget.h"
#include "warnquotacommand.h"

#include <notificationselement.h>
#include <plaintooltip.h>

#include <QFontDatabase>
#include <QSignalBlocker>
#include <QStyle>

#include <algorithm>
#include <iterator>

namespace
{
std::unique_ptr<Ui::NotificationsWidget> makeForm(QWidget *widget)
{
    auto form = std::make_unique<Ui::NotificationsWidget>();
    form->setupUi(widget);
    return form;
}

QFont fixedFont(const QFont &usual)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (usual.pointSizeF() > 0)
        font.setPointSizeF(usual.pointSizeF()); // the system's fixed font does not follow the size of the others
    return font;
}

/// Gives a text the fixed font, and room for that many lines.
void prepare(QPlainTextEdit *edit, int lines)
{
    edit->setFont(fixedFont(edit->font()));
    const int margins = 2 * (edit->frameWidth() + static_cast<int>(edit->document()->documentMargin()));
    edit->setMinimumHeight(lines * edit->fontMetrics().lineSpacing() + margins);
}

void showNote(QLabel *label, const QStringList &texts)
{
    label->setText(texts.join(QLatin1Char('\n')));
    label->setHidden(texts.isEmpty());
}
} // namespace

NotificationsWidget::NotificationsWidget(Module *module, AccessCheck access, QWidget *parent)
    : ViewEditElementWidget(module, access, parent)
    , _ui(makeForm(this))
    , _schedule(*_ui)
    , _texts(*_ui, this)
{
    constexpr int linesOfConfig = 8;
    constexpr int linesOfTable = 3;
    setElementType(NotificationsElement::typeName());
    _ui->_expertLineEdit->setFont(fixedFont(font()));
    prepare(_ui->_warnquotaconfPlainTextEdit, linesOfConfig);
    prepare(_ui->_quotagrpadminsPlainTextEdit, linesOfTable);
    prepare(_ui->_quotatabPlainTextEdit, linesOfTable);
    _wheelGuard.guard(_ui->_cronJobsComboBox);
    _wheelGuard.guard(_ui->_atDateTimeEdit);
    connect(this, &ViewEditElementWidget::editableChanged, this,
            [this](bool editable) { _texts.setEditable(editable); });
    connect(_ui->_cronJobsComboBox, &QComboBox::currentTextChanged, this, &NotificationsWidget::currentJobChanged);
    connect(_ui->_addedTaskToolButton, &QToolButton::clicked, this, &NotificationsWidget::addTask);
    connect(_ui->_deleteTaskToolButton, &QToolButton::clicked, this, &NotificationsWidget::deleteTask);
    showNotes();
    currentJobChanged(QString());
    setRunsEnabled(false);
    _ui->_noTaskLabel->hide(); // before the first read it is not known
    blockEditWidget(true);
}

NotificationsWidget::~NotificationsWidget() = default;

void NotificationsWidget::afterSuccessfulRead(Element *element, ElementData *record)
{
    if (element != this->element())
        return;
    if (!isBlocked())
        blockEditWidget(true);
    const auto *read = dynamic_cast<const NotificationsData *>(record);
    if (!read)
        return;
    _runs.clear();
    _refusals.clear();
    for (int i = 0; i < read->jobs.size(); ++i) {
        const QString name = QString::number(i + 1);
        const WarnquotaJob &run = read->jobs.at(i);
        _runs.insert(name, run);
        if (const QString refusal = RunNotes::refusal(name, run.job.schedule); !refusal.isEmpty())
            _refusals.insert(name, refusal);
    }
    _files = read->files;
    _asRead = read->asRead;
    _notes = read->notes;
    showNotes();

    QComboBox *names = _ui->_cronJobsComboBox;
    const QString shown = _runToShow.isEmpty() ? names->currentText() : _runToShow;
    _runToShow.clear();
    {
        const QSignalBlocker once(names); // shown below, and also where there is none
        names->clear();
        names->addItems(_runs.keys());
        names->setCurrentText(shown);
    }
    currentJobChanged(currentName());
    _ui->_addedTaskToolButton->setEnabled(true);
    setRunsEnabled(!_runs.isEmpty());
    ViewEditElementWidget::afterSuccessfulRead(element, record);
}

void NotificationsWidget::afterSuccessfulUpdate()
{
    const std::unique_ptr<ElementData> exported = exportElementData();
    const auto *written = dynamic_cast<const NotificationsData *>(exported.get());
    const auto shown = _runs.constFind(currentName());
    // The runs are numbered by their lines, which are as before where only texts were edited.
    if (shown != _runs.constEnd() && written && NotificationsManager::areRunsEdited(*written))
        _runToShow = QString::number(std::distance(_runs.constBegin(), shown) + 1);
    ViewEditElementWidget::afterSuccessfulUpdate();
}

QString NotificationsWidget::whyInvalid() const
{
    return isScheduleValid()
               ? ViewEditElementWidget::whyInvalid()
               : tr("A schedule has five fields of digits, \"*\", \"/\", \",\" and \"-\": minute, hour, day "
                    "of the month, month, day of the week.");
}

QWidget *NotificationsWidget::invalidField() const
{
    return isScheduleValid() ? ViewEditElementWidget::invalidField() : _ui->_expertLineEdit;
}

ViewEditElementWidget::ApplyWarning NotificationsWidget::warningBeforeApply() const
{
    const auto current = _runs.constFind(currentName());
    if (current == _runs.constEnd())
        return {};
    return {tr("Warning"), RunNotes::question(*current, fromForm(*current)), true};
}

std::unique_ptr<ElementData> NotificationsWidget::exportElementData() const
{
    auto exported = std::make_unique<NotificationsData>();
    exported->files = _files;
    exported->asRead = _asRead;
    QMap<QString, WarnquotaJob> runs = _runs;
    const auto current = runs.find(currentName());
    if (current != runs.end()) {
        *current = fromForm(*current);
        const QMap<QString, QString> edited = _texts.edited();
        for (auto text = edited.cbegin(); text != edited.cend(); ++text)
            exported->files.insert(text.key(), text.value());
    }
    exported->jobs = runs.values();
    return exported;
}

void NotificationsWidget::currentJobChanged(const QString &jobName)
{
    disconnectChangeDataWidgets();
    const WarnquotaJob run = _runs.value(jobName);
    _ui->_usersCheckBox->setChecked(run.users);
    _ui->_groupsCheckBox->setChecked(run.groups);
    _schedule.show(run.job.schedule, !run.job.asRead.isEmpty());
    _texts.show(run, _files);
    showNote(_ui->_runNoteLabel, RunNotes::of(run, _notes));
    showRefusals();
    connectChangeDataWidgets();
}

void NotificationsWidget::connectChangeDataWidgets()
{
    for (const QCheckBox *box : {_ui->_usersCheckBox, _ui->_groupsCheckBox})
        _changeConnections += connect(box, &QCheckBox::toggled, this, &NotificationsWidget::analizCheckBoxes);
    _changeConnections += _texts.connectChanges(this, [this] { changeData(); });
    _changeConnections += _schedule.connectChanges(this, [this] {
        cronWidgetsChanged();
        changeData();
    });
}

void NotificationsWidget::disconnectChangeDataWidgets()
{
    for (const QMetaObject::Connection &connection : qAsConst(_changeConnections))
        disconnect(connection);
    _changeConnections.clear();
}

void NotificationsWidget::changeData()
{
    _ui->_cronJobsComboBox->setEnabled(false);
    _ui->_addedTaskToolButton->setEnabled(false);
    _ui->_deleteTaskToolButton->setEnabled(false);
    changeContent();
}

void NotificationsWidget::cronWidgetsChanged()
{
    _schedule.showMode();
    changeExpertLineData();
    _refusals[currentName()] = RunNotes::refusal(currentName(), _schedule.schedule());
    showRefusals();
}

void NotificationsWidget::changeExpertLineData()
{
    _schedule.showLine();
}

void NotificationsWidget::addTask()
{
    const QString name = tr("new task");
    WarnquotaJob run;
    run.config = WarnquotaCommand::defaultConfig();
    run.quotaTab = WarnquotaCommand::defaultQuotaTab();
    run.adminsFile = WarnquotaCommand::defaultAdminsFile();
    _runs.insert(name, run);
    QComboBox *names = _ui->_cronJobsComboBox;
    if (names->findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive) < 0)
        names->addItem(name);
    if (names->currentText() == name)
        currentJobChanged(name); // in the place of the one before
    names->setCurrentText(name);
    _ui->_hourRadioButton->setChecked(true);
    _ui->_usersCheckBox->setChecked(true);
    setRunsEnabled(true);
    changeData();
    _ui->_usersCheckBox->setFocus();
}

void NotificationsWidget::deleteTask()
{
    QComboBox *names = _ui->_cronJobsComboBox;
    const QString name = currentName();
    _runs.remove(name);
    _refusals.remove(name);
    names->removeItem(names->findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive));
    showRefusals();
    if (_runs.isEmpty()) {
        setRunsEnabled(false);
        _ui->_noTaskLabel->hide(); // until this is applied there is one
        _ui->_addedTaskToolButton->setFocus();
    }
    changeContent();
}

void NotificationsWidget::analizCheckBoxes()
{
    if (_ui->_usersCheckBox->isChecked() || _ui->_groupsCheckBox->isChecked()) {
        changeData();
        return;
    }
    auto *cleared = qobject_cast<QCheckBox *>(sender());
    if (!cleared)
        return;
    const QSignalBlocker silent(cleared);
    cleared->setChecked(true);
}

void NotificationsWidget::resizeEvent(QResizeEvent *event)
{
    ViewEditElementWidget::resizeEvent(event);
    // Left and right: of the page, of the box around the texts, and of the two boxes that may stand side by side.
    const int margins = 2 * 4 * style()->pixelMetric(QStyle::PM_LayoutLeftMargin);
    const int tables = std::max(_ui->_quotagrpadminsGroupBox->minimumSizeHint().width(),
                                _ui->_quotatabGroupBox->minimumSizeHint().width());
    const bool fits = width() >= _ui->_warnquotaGroupBox->minimumSizeHint().width() + tables + margins;
    _ui->_filesLayout->setDirection(fits ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

void NotificationsWidget::showNotes()
{
    _ui->_dailyRunLabel->setVisible(_notes.hasDailyRun);
    _ui->_droppedLinesLabel->setHidden(_notes.droppedLines.isEmpty());
    _ui->_droppedLinesLabel->setToolTip(plainToolTip(_notes.droppedLines.join(QLatin1Char('\n'))));
    _ui->_noTableLabel->setVisible(_notes.isTableMissing && !_notes.isCronMissing);
    _ui->_noCronLabel->setVisible(_notes.isCronMissing);
}

void NotificationsWidget::showRefusals()
{
    constexpr int mostShown = 3;
    QStringList texts = _refusals.values();
    texts.removeAll(QString());
    const QStringList shown = texts.mid(0, mostShown);
    showNote(_ui->_refusedLineLabel, texts.size() > mostShown ? shown + QStringList(QChar(0x2026)) : shown);
}

void NotificationsWidget::setRunsEnabled(bool enabled)
{
    _ui->_notifyWidget->setEnabled(enabled);
    _ui->_globalWidget->setEnabled(enabled);
    _ui->_cronJobsComboBox->setEnabled(enabled);
    _ui->_deleteTaskToolButton->setEnabled(enabled);
    _ui->_noTaskLabel->setHidden(enabled);
}

bool NotificationsWidget::isScheduleValid() const
{
    return !_runs.contains(currentName()) || _schedule.isValid();
}

QString NotificationsWidget::currentName() const
{
    return _ui->_cronJobsComboBox->currentText();
}

WarnquotaJob NotificationsWidget::fromForm(WarnquotaJob run) const
{
    const WarnquotaJob before = run;
    run.users = _ui->_usersCheckBox->isChecked();
    run.groups = _ui->_groupsCheckBox->isChecked();
    run.job.schedule = _schedule.schedule();
    if (run.job.asRead.isEmpty() || !(run == before))
        run.job.user = QStringLiteral("root");
    return run;
}
