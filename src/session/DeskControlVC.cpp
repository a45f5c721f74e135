#include "session/DeskControlVC.h"

#include "platform/DesktopNotifications.h"
#include "platform/Platform.h"
#include "platform/Presence.h"
#include "session/ActivityRecorder.h"
#include "session/CountdownView.h"
#include "session/DeskControlHeader.h"
#include "session/DeskHeightDisplay.h"
#include "session/DeskRelease.h"
#include "session/DeskReleaseRow.h"
#include "session/DeskSession.h"
#include "session/DeskStatus.h"
#include "session/DeskStatusLine.h"
#include "session/GoToHeightSheet.h"
#include "session/HeightSaveHelpVC.h"
#include "session/HotKeyMovement.h"
#include "session/NotificationAlert.h"
#include "session/PageStack.h"
#include "session/PresetButtonRow.h"
#include "session/PresetKeys.h"
#include "session/SitStandReminder.h"
#include "session/StandingProgressView.h"
#include "store/CurrentDeskModel.h"
#include "widgets/HomeFunctionBtn.h"
#include "widgets/OMAlert.h"
#include "widgets/OMDeskPicture.h"
#include "widgets/OMHoverButton.h"
#include "widgets/OMWindowIdentifier.h"
#include "widgets/SJHUD.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace ostrel {

namespace {

constexpr QSize kMoveButtonSize{72, 72};
constexpr int kUnitLength = 2; // "cm" / "in"

DeskControlVC::ErrorScreenFactory& errorScreenFactory() {
    static DeskControlVC::ErrorScreenFactory factory;
    return factory;
}

bool isActivationKey(const QKeyEvent* event) {
    return !event->isAutoRepeat() &&
           (event->key() == Qt::Key_Space || event->key() == Qt::Key_Enter ||
            event->key() == Qt::Key_Return);
}

} // namespace

DeskControlVC::DeskControlVC(QWidget* parent)
    : QWidget(parent), m_session(new DeskSession(this)),
      m_reminder(new SitStandReminder(Platform::get<DesktopNotifications>(),
                                      Platform::get<Presence>(), this)) {
    m_pages = new PageStack(buildControlView(), this);

    showHeight(DeskHeightDisplay::unknownHeightText(DeskHeightDisplay::usesInches()));
    connectHeader();
    connectSession();
    connectReminder(); // before start-up, which starts the countdown of a desk that has it on
    m_session->setLoadViewAction();
    m_session->registerObservers();
    setTabOrderTopToBottom();
}

// The screen read from top to bottom, left to right.
void DeskControlVC::setTabOrderTopToBottom() {
    QList<QWidget*> order{m_header->help(),
                          m_header->countdown()->clearButton(),
                          m_header->lightStrip(),
                          m_header->settings(),
                          m_standing,
                          m_height,
                          m_up,
                          m_down};
    for (int slot = 0; slot < kPresetCount; ++slot)
        order.append(presetButton(slot));
    order.append(m_release->button());
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

// The error window is a window of its own: it goes with the screen whose desk it was about.
DeskControlVC::~DeskControlVC() {
    delete m_errorWindow.data();
}

void DeskControlVC::setErrorScreenFactory(ErrorScreenFactory factory) {
    errorScreenFactory() = std::move(factory);
}

QWidget* DeskControlVC::buildControlView() {
    auto* view = new QWidget(this);
    auto* layout = new QVBoxLayout(view);
    layout->setContentsMargins(24, 16, 24, 24);
    layout->setSpacing(12);
    m_header = new DeskControlHeader(view);
    layout->addWidget(m_header);
    m_standing = new StandingProgressView(view);
    m_standing->follow(ActivityRecorder::current());
    connect(m_standing, &QAbstractButton::clicked, this, &DeskControlVC::activityRequested);
    layout->addWidget(m_standing, 0, Qt::AlignHCenter);
    layout->addWidget(buildHeight());
    m_status = new DeskStatusLine(m_session->status(), view);
    layout->addWidget(m_status);
    m_picture = new OMDeskPicture(CurrentDeskModel::name(), view);
    m_picture->setMinimumSize(220, 150);
    layout->addWidget(m_picture, 1);
    layout->addWidget(buildMoveButtons());
    m_presets = new PresetButtonRow(*m_session, view);
    layout->addWidget(m_presets);
    m_release = new DeskReleaseRow(m_session->release(), view);
    layout->addWidget(m_release);
    return view;
}

QWidget* DeskControlVC::buildHeight() {
    m_height = new QLabel(this);
    m_height->setTextFormat(Qt::RichText);
    m_height->setAlignment(Qt::AlignCenter);
    m_height->setCursor(Qt::PointingHandCursor);
    m_height->setToolTip(tr("Click to move the desk to a height"));
    m_height->setFocusPolicy(Qt::TabFocus); // Enter or Space asks for a height too
    m_height->setObjectName(QStringLiteral("height"));
    m_height->setStyleSheet(QStringLiteral(
        "#height:focus { border: 2px solid palette(highlight); border-radius: 6px; }"));
    m_height->installEventFilter(this);
    return m_height;
}

QWidget* DeskControlVC::buildMoveButtons() {
    auto* box = new QWidget(this);
    m_up = new HomeFunctionBtn(QStringLiteral("control_up"), box);
    m_down = new HomeFunctionBtn(QStringLiteral("control_down"), box);
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(32);
    row->addStretch();
    for (HomeFunctionBtn* button : {m_up, m_down}) {
        button->setFixedSize(kMoveButtonSize);
        button->setRound(true);
        row->addWidget(button);
        connect(button, &HomeFunctionBtn::touchDwon, this, &DeskControlVC::touchDwon);
        connect(button, &HomeFunctionBtn::touchUp, this, &DeskControlVC::touchUp);
    }
    row->addStretch();
    return box;
}

void DeskControlVC::connectHeader() {
    connect(m_header, &DeskControlHeader::helpRequested, this, &DeskControlVC::actionShowHelp);
    auto* helpKey = new QShortcut(QKeySequence::HelpContents, this);
    connect(helpKey, &QShortcut::activated, this, &DeskControlVC::actionShowHelp);
    connect(m_header, &DeskControlHeader::lightStripRequested, this,
            &DeskControlVC::lightStripRequested);
    connect(m_header, &DeskControlHeader::settingsRequested, this,
            &DeskControlVC::settingsRequested);
}

void DeskControlVC::connectSession() {
    DeskSession* s = m_session;
    connect(s, &DeskSession::heightShown, this, &DeskControlVC::showHeight);
    connect(s, &DeskSession::deskOffsetsChanged, m_picture, &OMDeskPicture::setLayerOffsets);
    connect(s, &DeskSession::lightStripAvailable, m_header->lightStrip(), &QWidget::setVisible);
    connect(s, &DeskSession::toastRequested, this,
            [this](const QString& text) { SJHUD::showMessage(text, this); });
    connect(&s->presetKeys(), &PresetKeys::toastRequested, this,
            [this](const QString& text) { SJHUD::showMessage(text, this); });
    connect(&s->presetKeys(), &PresetKeys::heightToastRequested, this,
            [this](const QString& text) { SJHUD::showHeightMessage(text, this); });
    connect(s, &DeskSession::breakTipRequested, this, &DeskControlVC::bluetoothBreakTip);
    connect(&s->release(), &DeskRelease::releasedChanged, this, &DeskControlVC::showDeskReleased);
    // Never from inside the frame that reported the fault.
    connect(&s->status(), &DeskStatus::faultAppeared, this, [this] {
        Scheduler::instance().after(Scheduler::Duration::zero(), this, [this] { jumpErrorVC(); });
    });
}

void DeskControlVC::connectReminder() {
    SitStandReminder* r = m_reminder;
    CountdownView* countdown = m_header->countdown();
    connect(r, &SitStandReminder::countdownChanged, countdown, &CountdownView::setCountdown);
    connect(countdown, &CountdownView::clearClicked, r, &SitStandReminder::actionClearClock);
    connect(r, &SitStandReminder::alertRequested, this,
            &DeskControlVC::actionAlarmNotificationAlert);
    connect(r, &SitStandReminder::alertDismissed, this, &NotificationAlert::dismiss);
    connect(m_session, &DeskSession::heightShown, r, &SitStandReminder::deskMoved);
}

void DeskControlVC::actionAlarmNotificationAlert(bool isRepeat) {
    m_session->releaseHeldKeys();
    QPointer<SitStandReminder> reminder(m_reminder);
    const auto answer = [reminder](bool repeat) {
        return [reminder, repeat] {
            if (reminder)
                reminder->actionNotificationSetWithIsRepeat(repeat);
        };
    };
    NotificationAlert::present(this, isRepeat, answer(true), answer(false));
}

QString DeskControlVC::heightText() const {
    return m_heightText;
}

QString DeskControlVC::tipText() const {
    return m_presets->tipText();
}

CountdownView* DeskControlVC::countdownView() const {
    return m_header->countdown();
}

OMHoverButton* DeskControlVC::presetButton(int slot) const {
    return m_presets->button(slot);
}

OMHoverButton* DeskControlVC::settingsButton() const {
    return m_header->settings();
}

OMImageButton* DeskControlVC::lightStripButton() const {
    return m_header->lightStrip();
}

OMImageButton* DeskControlVC::helpButton() const {
    return m_header->help();
}

// One rich-text line, so the small unit sits on the big number's baseline.
void DeskControlVC::showHeight(const QString& text) {
    m_heightText = text;
    m_height->setText(QStringLiteral("<span style=\"font-size:%1pt\">%2</span>"
                                     "<span style=\"font-size:%3pt\">&nbsp;%4</span>")
                          .arg(kHeightPointSize)
                          .arg(text.chopped(kUnitLength).toHtmlEscaped())
                          .arg(kUnitPointSize)
                          .arg(text.right(kUnitLength).toHtmlEscaped()));
}

// ---- Gestures ----

void DeskControlVC::touchDwon(HomeFunctionBtn* button) {
    if (button == m_up)
        m_session->holdKey(command::kUpKey);
    else if (button == m_down)
        m_session->holdKey(command::kDownKey);
}

void DeskControlVC::touchUp(HomeFunctionBtn*) {
    m_session->releaseKey();
}

void DeskControlVC::showDeskReleased(bool released) {
    for (QWidget* control : {static_cast<QWidget*>(m_up), static_cast<QWidget*>(m_down),
                             static_cast<QWidget*>(m_height), static_cast<QWidget*>(m_presets)})
        control->setEnabled(!released);
}

void DeskControlVC::actionShowHelp() {
    HeightSaveHelpVC* sheet = HeightSaveHelpVC::present(this);
    connect(sheet, &HeightSaveHelpVC::customizeRequested, this,
            &DeskControlVC::intelligentControlRequested, Qt::UniqueConnection);
}

bool DeskControlVC::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_height &&
        (event->type() == QEvent::MouseButtonRelease ||
         (event->type() == QEvent::KeyPress && isActivationKey(static_cast<QKeyEvent*>(event)))))
        actionGoToHeight();
    // A sheet now covers the screen: the user looks at it, not at a desk moving by itself.
    if (watched == window() && event->type() == QEvent::WindowBlocked)
        m_session->hotKeyMovement().globalKeyStopUpDown();
    return QWidget::eventFilter(watched, event);
}

void DeskControlVC::showEvent(QShowEvent* event) {
    window()->installEventFilter(this); // the window is known once shown; installing is idempotent
    QWidget::showEvent(event);
}

void DeskControlVC::actionGoToHeight() {
    QPointer<DeskSession> session(m_session);
    const bool inches = DeskHeightDisplay::usesInches();
    const double current =
        DeskHeightDisplay::normalisedHeight(QString::number(m_session->currentHeight())).toDouble();
    GoToHeightSheet::present(
        this, m_session->limits(), inches, current, m_session->goToHeight(),
        [this, session, inches](int tenths) {
            if (!session)
                return false;
            const GoToHeight::Refusal refusal = session->moveTo(tenths);
            if (refusal != GoToHeight::Refusal::None)
                SJHUD::showMessage(GoToHeight::refusalText(refusal, session->limits(), inches),
                                   this);
            return session->goToHeight().isMoving();
        },
        [session] {
            if (session)
                session->stopMoving();
        });
}

void DeskControlVC::jumpErrorVC() {
    if (!m_errorWindow && errorScreenFactory())
        m_errorWindow = errorScreenFactory()(m_session->status().errorCode());
    OMWindowIdentifier::bringToFront(m_errorWindow);
}

void DeskControlVC::bluetoothBreakTip() {
    // A loss is reported by the link and by the connection alike: ask once.
    if (m_breakTipShowing)
        return;
    m_breakTipShowing = true;
    QPointer<DeskControlVC> self(this);
    OMAlert::show(this,
                  {tr("Prompt"),
                   tr("The Bluetooth connection of the device is disconnected"),
                   {tr("Confirm")}},
                  [self](int response) {
                      if (!self)
                          return;
                      self->m_breakTipShowing = false;
                      if (response == OMAlert::kFirstButton)
                          self->m_session->actionDeleteCurrentDeviceSetting();
                  });
}

} // namespace ostrel
