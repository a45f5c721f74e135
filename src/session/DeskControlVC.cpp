#include "session/DeskControlVC.h"

#include "platform/DesktopNotifications.h"
#include "platform/Platform.h"
#include "platform/Presence.h"
#include "session/ActivityRecorder.h"
#include "session/CountdownView.h"
#include "session/DeskHeightDisplay.h"
#include "session/DeskRelease.h"
#include "session/DeskReleaseRow.h"
#include "session/DeskSession.h"
#include "session/DeskStatus.h"
#include "session/DeskStatusLine.h"
#include "session/GoToHeightSheet.h"
#include "session/HeightSaveHelpVC.h"
#include "session/HeldKeyOwner.h"
#include "session/HotKeyMovement.h"
#include "session/NotificationAlert.h"
#include "session/PresetKeys.h"
#include "session/ShortcutsHeightSetVC.h"
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
#include <QStackedLayout>
#include <QVBoxLayout>

namespace ostrel {

namespace {

constexpr QSize kMoveButtonSize{72, 72};
constexpr QSize kPresetButtonSize{64, 64};
constexpr QSize kSmallButtonSize{28, 28};
constexpr qreal kSettingsTurnDegrees = -30.0;
constexpr Scheduler::Duration kSettingsTurnDuration{300};
const QColor kHoverBackground = QColor::fromRgbF(0.945f, 0.945f, 0.945f);
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
    m_stack = new QStackedLayout(this);
    m_stack->addWidget(buildControlView());

    showHeight(DeskHeightDisplay::unknownHeightText(DeskHeightDisplay::usesInches()));
    refreshPresetImages();
    connectSession();
    connectReminder(); // before start-up, which starts the countdown of a desk that has it on
    m_session->setLoadViewAction();
    m_session->registerObservers();
    setTabOrderTopToBottom();
}

// The screen read from top to bottom, left to right.
void DeskControlVC::setTabOrderTopToBottom() {
    QList<QWidget*> order{
        m_help, m_countdown->clearButton(), m_lightStrip, m_settings, m_standing, m_height, m_up,
        m_down};
    for (OMHoverButton* preset : m_presets)
        order.append(preset);
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
    layout->addWidget(buildHeader());
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
    layout->addWidget(buildPresetButtons());
    m_tip = new QLabel(view);
    m_tip->setAlignment(Qt::AlignCenter);
    m_tip->setMinimumHeight(m_tip->fontMetrics().height());
    layout->addWidget(m_tip);
    m_release = new DeskReleaseRow(m_session->release(), view);
    layout->addWidget(m_release);
    return view;
}

QWidget* DeskControlVC::buildHeader() {
    auto* header = new QWidget(this);
    m_help = new OMImageButton(QStringLiteral("control_help"), header);
    m_help->setToolTip(tr("How to Save Height Presets"));
    m_lightStrip = new OMImageButton(QStringLiteral("control_light"), header);
    m_lightStrip->hide(); // until the desk reports a light strip
    m_settings = new OMHoverButton(QStringLiteral("control_set_normal"), header);
    for (QWidget* button : {static_cast<QWidget*>(m_help), static_cast<QWidget*>(m_lightStrip),
                            static_cast<QWidget*>(m_settings)})
        button->setFixedSize(kSmallButtonSize);

    auto* row = new QHBoxLayout(header);
    row->setContentsMargins(0, 0, 0, 0);
    m_countdown = new CountdownView(header);
    row->addWidget(m_help);
    row->addStretch();
    row->addWidget(m_countdown);
    row->addStretch();
    row->addWidget(m_lightStrip);
    row->addWidget(m_settings);

    connect(m_help, &QAbstractButton::clicked, this, &DeskControlVC::actionShowHelp);
    auto* helpKey = new QShortcut(QKeySequence::HelpContents, this);
    connect(helpKey, &QShortcut::activated, this, &DeskControlVC::actionShowHelp);
    connect(m_lightStrip, &QAbstractButton::clicked, this, &DeskControlVC::lightStripRequested);
    connect(m_settings, &OMHoverButton::touchHoverDwon, this, &DeskControlVC::touchHoverDwon);
    connect(m_settings, &OMHoverButton::touchHoverUp, this, &DeskControlVC::touchHoverUp);
    connect(m_settings, &OMHoverButton::hoverStart, this, &DeskControlVC::hoverStart);
    connect(m_settings, &OMHoverButton::hoverEnd, this, &DeskControlVC::hoverEnd);
    return header;
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

QWidget* DeskControlVC::buildPresetButtons() {
    auto* box = new QWidget(this);
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(12);
    row->addStretch();
    for (int slot = 0; slot < kPresetCount; ++slot) {
        auto* button = new OMHoverButton(PresetKeys::presetImageName(slot, false), box);
        button->setFixedSize(kPresetButtonSize);
        button->setRound(true);
        m_presets[std::size_t(slot)] = button;
        row->addWidget(button);
        connect(button, &OMHoverButton::touchHoverDwon, this, &DeskControlVC::touchHoverDwon);
        connect(button, &OMHoverButton::touchHoverUp, this, &DeskControlVC::touchHoverUp);
        connect(button, &OMHoverButton::longHoverPress, this, &DeskControlVC::longHoverPress);
        connect(button, &OMHoverButton::hoverStart, this, &DeskControlVC::hoverStart);
        connect(button, &OMHoverButton::hoverEnd, this, &DeskControlVC::hoverEnd);
    }
    row->addStretch();
    return box;
}

void DeskControlVC::connectSession() {
    DeskSession* s = m_session;
    connect(s, &DeskSession::heightShown, this, &DeskControlVC::showHeight);
    connect(s, &DeskSession::deskOffsetsChanged, m_picture, &OMDeskPicture::setLayerOffsets);
    connect(&s->presetKeys(), &PresetKeys::presetsChanged, this,
            &DeskControlVC::refreshPresetImages);
    connect(s, &DeskSession::lightStripAvailable, m_lightStrip, &QWidget::setVisible);
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
    // A preset looks pressed for as long as its key goes out, whoever ends it.
    connect(&HeldKeyOwner::instance(), &HeldKeyOwner::keyChanged, this, [this](int type) {
        if (command::presetSlot(type) < 0)
            showPresetsReleased();
    });
}

void DeskControlVC::connectReminder() {
    SitStandReminder* r = m_reminder;
    connect(r, &SitStandReminder::countdownChanged, m_countdown, &CountdownView::setCountdown);
    connect(m_countdown, &CountdownView::clearClicked, r, &SitStandReminder::actionClearClock);
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
    return m_tip->text();
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

void DeskControlVC::refreshPresetImages() {
    for (int slot = 0; slot < kPresetCount; ++slot)
        m_presets[std::size_t(slot)]->setImageName(
            PresetKeys::presetImageName(slot, m_session->presetKeys().memory(slot) >= 1));
}

int DeskControlVC::slotOf(const QObject* button) const {
    for (int slot = 0; slot < kPresetCount; ++slot) {
        if (m_presets[std::size_t(slot)] == button)
            return slot;
    }
    return -1;
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

void DeskControlVC::touchHoverDwon(OMHoverButton* button) {
    if (const int slot = slotOf(button); slot >= 0) {
        m_session->presetKeys().holdPresetKey(slot);
        // Pressed for as long as its key goes out; an unset preset sends none.
        button->setActive(m_session->presetKeys().memory(slot) >= 1);
    } else if (button == m_settings) {
        emit settingsRequested();
    }
}

void DeskControlVC::touchHoverUp(OMHoverButton*) {
    m_session->presetKeys().releasePresetKey();
}

void DeskControlVC::showPresetsReleased() {
    for (OMHoverButton* preset : m_presets)
        preset->setActive(false);
}

void DeskControlVC::showDeskReleased(bool released) {
    for (QWidget* control : {static_cast<QWidget*>(m_up), static_cast<QWidget*>(m_down),
                             static_cast<QWidget*>(m_height)})
        control->setEnabled(!released);
    for (OMHoverButton* preset : m_presets)
        preset->setEnabled(!released);
}

void DeskControlVC::longHoverPress(OMHoverButton* button) {
    const int slot = slotOf(button);
    if (slot < 0 || !m_session->canSavePreset())
        return;
    QPointer<PresetKeys> presets(&m_session->presetKeys());
    ShortcutsHeightSetVC::present(this, PresetKeys::presetImageName(slot, true),
                                  PresetKeys::presetSaveTip(slot), [presets, slot] {
                                      if (presets)
                                          presets->actionSetMemoryKeyWithtype(
                                              command::presetKey(slot));
                                  });
}

void DeskControlVC::hoverStart(OMHoverButton* button) {
    if (button == m_settings) {
        m_settings->setImageName(QStringLiteral("control_set"));
        m_settings->turnTo(kSettingsTurnDegrees, kSettingsTurnDuration);
        return;
    }
    button->setBackgroundColor(kHoverBackground);
    showTipLabelInView(button);
}

void DeskControlVC::hoverEnd(OMHoverButton* button) {
    if (button == m_settings) {
        QPointer<OMHoverButton> settings(m_settings);
        m_settings->turnTo(0.0, kSettingsTurnDuration, [settings] {
            if (settings)
                settings->setImageName(QStringLiteral("control_set_normal"));
        });
        return;
    }
    button->setBackgroundColor(QColor());
    hideTipLabel();
}

void DeskControlVC::showTipLabelInView(OMHoverButton* button) {
    const int slot = slotOf(button);
    m_tip->setText(slot >= 0 ? m_session->presetKeys().presetTipText(slot) : QString());
}

void DeskControlVC::hideTipLabel() {
    m_tip->clear();
}

void DeskControlVC::actionShowHelp() {
    HeightSaveHelpVC* sheet = HeightSaveHelpVC::present(this);
    connect(sheet, &HeightSaveHelpVC::customizeRequested, this,
            &DeskControlVC::intelligentControlRequested, Qt::UniqueConnection);
}

// ---- Pages ----

void DeskControlVC::pushViewControlWithView(QWidget* view) {
    m_stack->addWidget(view);
    m_stack->setCurrentWidget(view);
}

void DeskControlVC::popViewControl() {
    QWidget* top = topView();
    if (!top)
        return;
    m_stack->removeWidget(top);
    m_stack->setCurrentIndex(m_stack->count() - 1);
    // The page may be closing itself from one of its own handlers.
    top->hide();
    top->deleteLater();
}

QWidget* DeskControlVC::topView() const {
    return pageCount() > 0 ? m_stack->widget(m_stack->count() - 1) : nullptr;
}

int DeskControlVC::pageCount() const {
    return m_stack->count() - 1;
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
