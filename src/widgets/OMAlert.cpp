#include "OMAlert.h"

#include <QMessageBox>
#include <QPushButton>

namespace ostrel {

namespace {

OMAlert::Presenter& installedPresenter() {
    static OMAlert::Presenter presenter;
    return presenter;
}

void showMessageBox(QWidget* parent, const OMAlertContent& content, const OMAlert::Done& done) {
    auto* box = new QMessageBox(parent);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setIcon(content.warning ? QMessageBox::Warning : QMessageBox::NoIcon);
    box->setText(content.message);
    box->setInformativeText(content.informativeText);
    box->setWindowModality(parent ? Qt::WindowModal : Qt::ApplicationModal);
    box->setWindowTitle(QStringLiteral("Ostrel Motion"));
    // Where no window manager draws a frame, the sheet still needs an edge of its own; and a
    // width that leaves the window manager room for the whole title.
    box->setStyleSheet(QStringLiteral("QMessageBox { border: 1px solid palette(mid); }"
                                      "QLabel#qt_msgbox_label { min-width: 280px; }"));
    for (int i = 0; i < content.buttons.size(); ++i) {
        QPushButton* button = box->addButton(content.buttons.at(i), QMessageBox::AcceptRole);
        if (i == 0)
            box->setDefaultButton(button);
        // Escape answers with the last button: the only one, or the one that declines.
        if (i == content.buttons.size() - 1)
            box->setEscapeButton(button);
        QObject::connect(button, &QPushButton::clicked, box, [done, i] {
            if (done)
                done(OMAlert::kFirstButton + i);
        });
    }
    box->open();
}

} // namespace

void OMAlert::show(QWidget* parent, const OMAlertContent& content, Done done) {
    if (const Presenter& presenter = installedPresenter()) {
        const int response = presenter(parent, content);
        if (done)
            done(response);
        return;
    }
    showMessageBox(parent, content, done);
}

OMAlert::Presenter OMAlert::setPresenter(Presenter presenter) {
    return std::exchange(installedPresenter(), std::move(presenter));
}

} // namespace ostrel
