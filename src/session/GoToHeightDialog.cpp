#include "session/GoToHeightDialog.h"

#include "session/GoToHeight.h"

#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace ostrel {

namespace {

constexpr int kDecimals = 1;
constexpr int kMinimumWidth = 300;

QString number(double value) {
    return QString::number(value, 'f', kDecimals);
}

} // namespace

GoToHeightDialog::GoToHeightDialog(QWidget* parent, const GoToHeightSheet::Question& question,
                                   GoToHeight& moves, Choose choose, std::function<void()> stop)
    : QDialog(parent), m_choose(std::move(choose)), m_stopFn(std::move(stop)),
      m_unit(question.unit), m_pages(new QStackedWidget(this)) {
    setWindowTitle(tr("Go to a height"));
    setMinimumWidth(kMinimumWidth);
    // Shown as a sheet, often without a title bar: the title and an edge of its own.
    setObjectName(QStringLiteral("goToHeight"));
    setStyleSheet(QStringLiteral("#goToHeight { border: 1px solid palette(mid); }"));
    auto* title = new QLabel(windowTitle(), this);
    QFont titleFont = title->font();
    titleFont.setBold(true);
    title->setFont(titleFont);
    m_pages->addWidget(buildQuestion(question));
    m_pages->addWidget(buildMoving());
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 16, 20, 16);
    layout->addWidget(title);
    layout->addWidget(m_pages);

    connect(m_stop, &QPushButton::clicked, this, &GoToHeightDialog::reject);
    // The move ends one way or another: arrival, Stop, a key of the user's, the link going.
    connect(&moves, &GoToHeight::finished, this, [this] {
        if (showsMoving())
            done(QDialog::Accepted);
    });
}

QWidget* GoToHeightDialog::buildQuestion(const GoToHeightSheet::Question& question) {
    auto* page = new QWidget(this);
    auto* label = new QLabel(tr("Move the desk to (%1):").arg(question.unit), page);
    label->setWordWrap(true);
    m_range =
        new QLabel(tr("Between %1 and %2 %3")
                       .arg(number(question.minimum), number(question.maximum), question.unit),
                   page);
    m_range->setEnabled(false); // a hint, drawn quieter than the question
    m_field = new QDoubleSpinBox(page);
    m_field->setDecimals(kDecimals);
    m_field->setRange(question.minimum, question.maximum);
    m_field->setValue(question.current);
    m_field->setSuffix(QLatin1Char(' ') + question.unit);
    label->setBuddy(m_field);

    auto* buttons = new QDialogButtonBox(page);
    m_go = buttons->addButton(tr("Go"), QDialogButtonBox::AcceptRole);
    m_go->setDefault(true);
    buttons->addButton(tr("Cancel"), QDialogButtonBox::RejectRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &GoToHeightDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &GoToHeightDialog::reject);

    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label);
    layout->addWidget(m_field);
    layout->addWidget(m_range);
    layout->addSpacing(8);
    layout->addWidget(buttons);
    return page;
}

QWidget* GoToHeightDialog::buildMoving() {
    auto* page = new QWidget(this);
    m_moving = new QLabel(page);
    m_moving->setWordWrap(true);
    m_stop = new QPushButton(tr("Stop"), page);
    auto* buttons = new QDialogButtonBox(page);
    buttons->addButton(m_stop, QDialogButtonBox::RejectRole);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_moving, 1);
    layout->addWidget(buttons);
    return page;
}

bool GoToHeightDialog::showsMoving() const {
    return m_pages->currentIndex() == 1;
}

QString GoToHeightDialog::rangeText() const {
    return m_range->text();
}

// Go: the desk starts moving and the dialog says so; a refusal (said by the caller) or a move
// that never starts closes it at once.
void GoToHeightDialog::accept() {
    if (showsMoving())
        return;
    m_field->interpretText();
    const double value = m_field->value();
    if (!m_choose(value)) {
        QDialog::accept();
        return;
    }
    m_moving->setText(tr("Moving the desk to %1 %2…").arg(number(value), m_unit));
    m_pages->setCurrentIndex(1);
    m_stop->setDefault(true);
    m_stop->setFocus();
}

void GoToHeightDialog::reject() {
    if (showsMoving() && m_stopFn)
        m_stopFn();
    QDialog::reject();
}

} // namespace ostrel
