// SPDX-FileCopyrightText: 2026 The kra authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "notificationswidget.h"

#include "cronsyntax.h"
#include "crontabreader.h"
#include "schedulevalidator.h"
#include "ui_notificationswidget.h"
#include "warnquotacommand.h"

#include <plaintooltip.h>

#include <QFontDatabase>
#include <QSignalBlocker>
#include <QStyle>

#include <algorithm>
#include <iterator>

namespace
{
using Mode = ScheduleChoice::Mode;

std::unique_ptr<Ui::NotificationsWidget> makeForm(QWidget *widget)
{
    auto form = std::make_unique<Ui::NotificationsWidget>();
    form->setupUi(widget);
    return form;
}

/// What toPlainText() gives, with no-break spaces left as they are.
QString textOf(const QPlainTextEdit *edit)
{
    QString text = edit->document()->toRawText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    text.replace(QChar::LineSeparator, QLatin1Char('\n'));
    return text;
}

QFont fixedFont(const QFont &usual)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    if (usual.pointSizeF() > 0)
        font.setPointSizeF(usual.pointSizeF()); // the system's fixed font does not follow the size of the others
    return font;
}

void setLines(QPlainTextEdit *edit, int lines)
{
    const int margins = 2 * (edit->frameWidth() + static_cast<int>(edit->document()->documentMargin()));
    edit->setMinimumHeight(lines * edit->fontMetrics().lineSpacing() + margins);
}
} // namespace

NotificationsWidget::NotificationsWidget(Module *module, AccessCheck access, QWidget *parent)
    : ViewEditElementWidget(module, access, parent)
    , _ui(makeForm(this))
    , _texts({{{_ui->_warnquotaconfPlainTextEdit, &WarnquotaJob::config},
               {_ui->_quotagrpadminsPlainTextEdit, &WarnquotaJob::adminsFile},
               {_ui->_quotatabPlainTextEdit, &WarnquotaJob::quotaTab}}})
    , _validator(new ScheduleValidator(this))
{
    setElementType(QStringLiteral("QuotaNotificationsElement"));
    _ui->_expertLineEdit->setValidator(_validator);
    _ui->_expertLineEdit->setFont(fixedFont(font()));
    for (const FileText &text : _texts) {
        // Texts stay readable and scrollable where they cannot be edited.
        text.edit->setFont(fixedFont(font()));
        connect(this, &ViewEditElementWidget::editableChanged, text.edit,
                [edit = text.edit](bool editable) { edit->setReadOnly(!editable); });
    }
    connect(_ui->_cronJobsComboBox, &QComboBox::currentTextChanged, this, &NotificationsWidget::currentJobChanged);
    connect(_ui->_addedTaskToolButton, &QToolButton::clicked, this, &NotificationsWidget::addTask);
    connect(_ui->_deleteTaskToolButton, &QToolButton::clicked, this, &NotificationsWidget::deleteTask);
    showNotes({});
    currentJobChanged(QString());
    setTasksEnabled(false);
    _ui->_noTaskLabel->hide(); // nobody knows before the first read
    blockEditWidget(true);
}

NotificationsWidget::~NotificationsWidget() = default;

void NotificationsWidget::afterSuccessfulRead(Element *element, ElementData *record)
{
    if (element != this->element() || role() != MainRole)
        return;
    if (!isBlocked())
        blockEditWidget(true);
    const auto *read = dynamic_cast<const NotificationsData *>(record);
    if (!read)
        return;
    _tasks.clear();
    for (int i = 0; i < read->jobs.size(); ++i)
        _tasks.insert(QString::number(i + 1), read->jobs.at(i));
    _files = read->files;
    _asRead = read->params.value(NotificationsData::asReadKey());
    showNotes(read->params);

    QComboBox *tasks = _ui->_cronJobsComboBox;
    const QString shown = _taskToShow.isEmpty() ? tasks->currentText() : _taskToShow;
    _taskToShow.clear();
    {
        const QSignalBlocker once(tasks); // shown below, and also where there is none
        tasks->clear();
        tasks->addItems(_tasks.keys());
        tasks->setCurrentText(shown);
    }
    currentJobChanged(tasks->currentText());
    _ui->_addedTaskToolButton->setEnabled(true);
    setTasksEnabled(!_tasks.isEmpty());
    ViewEditElementWidget::afterSuccessfulRead(element, record);
}

void NotificationsWidget::afterSuccessfulUpdate()
{
    const auto shown = _tasks.constFind(_ui->_cronJobsComboBox->currentText());
    if (shown != _tasks.constEnd())
        _taskToShow = QString::number(std::distance(_tasks.constBegin(), shown) + 1);
    ViewEditElementWidget::afterSuccessfulUpdate();
}

bool NotificationsWidget::isContentValid() const
{
    const ScheduleChoice chosen = choice();
    const bool isScheduleValid =
        chosen.mode != Mode::Expert || chosen == _shown || _ui->_expertLineEdit->hasAcceptableInput();
    return isScheduleValid && ViewEditElementWidget::isContentValid();
}

std::unique_ptr<ElementData> NotificationsWidget::exportElementData() const
{
    auto exported = std::make_unique<NotificationsData>();
    exported->files = _files;
    QMap<QString, WarnquotaJob> tasks = _tasks;
    QStringList edited;
    const auto current = tasks.find(_ui->_cronJobsComboBox->currentText());
    if (current != tasks.end()) {
        current->users = _ui->_usersCheckBox->isChecked();
        current->groups = _ui->_groupsCheckBox->isChecked();
        current->job.user = QStringLiteral("root");
        if (!(choice() == _shown))
            current->job.schedule = choice().schedule();
        for (const FileText &text : _texts) {
            if (!text.edit->document()->isModified())
                continue;
            exported->files.insert((*current).*text.path, textOf(text.edit));
            edited.append((*current).*text.path);
        }
    }
    exported->jobs = tasks.values();
    exported->params.insert(NotificationsData::editedFilesKey(), edited);
    exported->params.insert(NotificationsData::asReadKey(), _asRead);
    return exported;
}

void NotificationsWidget::currentJobChanged(const QString &jobName)
{
    disconnectChangeDataWidgets();
    const WarnquotaJob job = _tasks.value(jobName);
    _ui->_usersCheckBox->setChecked(job.users);
    _ui->_groupsCheckBox->setChecked(job.groups);
    showSchedule(job.job.schedule);
    for (const FileText &text : _texts) {
        text.edit->setPlainText(_files.value(job.*text.path));
        text.edit->setToolTip(plainToolTip(job.*text.path));
    }
    connectChangeDataWidgets();
}

void NotificationsWidget::connectChangeDataWidgets()
{
    for (const QCheckBox *box : {_ui->_usersCheckBox, _ui->_groupsCheckBox})
        _changeConnections += connect(box, &QCheckBox::toggled, this, &NotificationsWidget::analizCheckBoxes);
    for (const FileText &text : _texts)
        _changeConnections += connect(text.edit, &QPlainTextEdit::textChanged, this, &NotificationsWidget::changeData);

    const auto changeSchedule = [this] {
        cronWidgetsChanged();
        changeData();
    };
    for (const QRadioButton *mode :
         {_ui->_monthRadioButton, _ui->_dayRadioButton, _ui->_hourRadioButton, _ui->_expertRadioButton})
        _changeConnections += connect(mode, &QRadioButton::toggled, this, changeSchedule);
    _changeConnections += connect(_ui->_atDateTimeEdit, &QDateTimeEdit::dateTimeChanged, this, changeSchedule);
    _changeConnections += connect(_ui->_expertLineEdit, &QLineEdit::textChanged, this, changeSchedule);
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
    showMode();
    changeExpertLineData();
}

void NotificationsWidget::changeExpertLineData()
{
    const ScheduleChoice chosen = choice();
    if (chosen.mode != Mode::Expert)
        _ui->_expertLineEdit->setText(CrontabReader::formatSchedule(chosen.schedule()));
    else if (chosen == _shown)
        _ui->_expertLineEdit->setModified(false); // typed back to what it was, which may be applied whatever it is
}

void NotificationsWidget::addTask()
{
    const QString name = tr("new task");
    WarnquotaJob job;
    job.config = WarnquotaCommand::defaultConfig();
    job.quotaTab = WarnquotaCommand::defaultQuotaTab();
    job.adminsFile = WarnquotaCommand::defaultAdminsFile();
    _tasks.insert(name, job);
    if (_ui->_cronJobsComboBox->findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive) < 0)
        _ui->_cronJobsComboBox->addItem(name);
    _ui->_cronJobsComboBox->setCurrentText(name);
    _ui->_hourRadioButton->setChecked(true);
    _ui->_usersCheckBox->setChecked(true);
    setTasksEnabled(true);
    changeData();
    _ui->_usersCheckBox->setFocus();
}

void NotificationsWidget::deleteTask()
{
    QComboBox *tasks = _ui->_cronJobsComboBox;
    const QString name = tasks->currentText();
    _tasks.remove(name);
    tasks->removeItem(tasks->findText(name, Qt::MatchExactly | Qt::MatchCaseSensitive));
    if (_tasks.isEmpty()) {
        setTasksEnabled(false);
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
    constexpr int linesOfConfig = 8;
    constexpr int linesOfTable = 3;
    const int margins = 8 * style()->pixelMetric(QStyle::PM_LayoutLeftMargin);
    const int tables = std::max(_ui->_quotagrpadminsGroupBox->minimumSizeHint().width(),
                                _ui->_quotatabGroupBox->minimumSizeHint().width());
    const bool fits = width() >= _ui->_warnquotaGroupBox->minimumSizeHint().width() + tables + margins;
    _ui->_filesLayout->setDirection(fits ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    setLines(_ui->_warnquotaconfPlainTextEdit, linesOfConfig);
    setLines(_ui->_quotagrpadminsPlainTextEdit, linesOfTable);
    setLines(_ui->_quotatabPlainTextEdit, linesOfTable);
}

void NotificationsWidget::showNotes(const QVariantMap &notes)
{
    const QStringList dropped = notes.value(NotificationsData::droppedLinesKey()).toStringList();
    _ui->_dailyRunLabel->setVisible(notes.value(NotificationsData::dailyRunKey()).toBool());
    _ui->_droppedLinesLabel->setVisible(!dropped.isEmpty());
    _ui->_droppedLinesLabel->setToolTip(plainToolTip(dropped.join(QLatin1Char('\n'))));
}

void NotificationsWidget::showSchedule(const CronSchedule &schedule)
{
    _shown = ScheduleChoice::of(schedule, QDate::currentDate());
    _ui->_monthRadioButton->setChecked(_shown.mode == Mode::Monthly);
    _ui->_dayRadioButton->setChecked(_shown.mode == Mode::Daily);
    _ui->_hourRadioButton->setChecked(_shown.mode == Mode::Hourly);
    _ui->_expertRadioButton->setChecked(_shown.mode == Mode::Expert);
    _ui->_atDateTimeEdit->setDateTime(_shown.at);
    _ui->_expertLineEdit->setText(_shown.line);
    _validator->setLenient(!_ui->_expertLineEdit->hasAcceptableInput());
    showMode();
}

void NotificationsWidget::showMode()
{
    const auto show = [this](const QString &format, const QString &label) {
        _ui->_atDateTimeEdit->showSections(format);
        _ui->_atLabel->setText(label);
    };
    // Tab stops at the chosen mode, and not at the first of them, from where the arrow keys would choose another.
    for (QRadioButton *button :
         {_ui->_monthRadioButton, _ui->_dayRadioButton, _ui->_hourRadioButton, _ui->_expertRadioButton})
        button->setFocusPolicy(button->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
    const Mode mode = choice().mode;
    if (mode == Mode::Monthly)
        show(QStringLiteral("dd HH:mm"), tr("At (day hours:minutes):"));
    else if (mode == Mode::Daily)
        show(QStringLiteral("HH:mm"), tr("At (hours:minutes):"));
    else if (mode == Mode::Hourly)
        show(QStringLiteral("mm"), tr("At (minutes):"));
    _ui->_atLabel->setHidden(_ui->_atLabel->text().isEmpty()); // and its room with it
    _ui->_atDateTimeEdit->setEnabled(mode != Mode::Expert);
    _ui->_expertLineEdit->setEnabled(mode == Mode::Expert);
    showRefusal();
}

void NotificationsWidget::showRefusal()
{
    const ScheduleChoice chosen = choice();
    const bool isKnown = chosen.mode == Mode::Expert && !(chosen.schedule() == CronSchedule());
    const CronSyntax::Field refused = isKnown ? CronSyntax::refusedField(chosen.schedule()) : CronSyntax::None;
    const QString fields[] = {tr("the minute (0 to 59)"), tr("the hour (0 to 23)"),
                              tr("the day of the month (1 to 31)"), tr("the month (1 to 12)"),
                              tr("the day of the week (0 to 7)")};
    _ui->_refusedLineLabel->setVisible(refused != CronSyntax::None);
    if (refused != CronSyntax::None)
        //: %1 is a field of the line: "the hour (0 to 23)"
        _ui->_refusedLineLabel->setFullText(tr("cron refuses %1, and with it all tasks.").arg(fields[refused]));
}

void NotificationsWidget::setTasksEnabled(bool enabled)
{
    _ui->_notifyWidget->setEnabled(enabled);
    _ui->_globalWidget->setEnabled(enabled);
    _ui->_cronJobsComboBox->setEnabled(enabled);
    _ui->_deleteTaskToolButton->setEnabled(enabled);
    _ui->_noTaskLabel->setHidden(enabled);
}

ScheduleChoice NotificationsWidget::choice() const
{
    Mode mode = Mode::None;
    if (_ui->_monthRadioButton->isChecked())
        mode = Mode::Monthly;
    else if (_ui->_dayRadioButton->isChecked())
        mode = Mode::Daily;
    else if (_ui->_hourRadioButton->isChecked())
        mode = Mode::Hourly;
    else if (_ui->_expertRadioButton->isChecked())
        mode = Mode::Expert;
    return {mode, _ui->_atDateTimeEdit->dateTime(), _ui->_expertLineEdit->text()};
}
