#include "platform/linux/qt/file_choice.h"

#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <utility>

namespace platform_linux::qt {

namespace {

// Enter replaces nothing.
bool mayBeReplaced(QWidget& owner, const QString& title, const QString& file) {
    QMessageBox box(QMessageBox::Question, title, "Die Datei „" + file + "“ gibt es schon. Soll sie ersetzt werden?",
                    QMessageBox::NoButton, &owner);
    box.setTextFormat(Qt::PlainText);
    const QPushButton* const replace = box.addButton("Ersetzen", QMessageBox::AcceptRole);
    QPushButton* const keep = box.addButton("Abbrechen", QMessageBox::RejectRole);
    box.setDefaultButton(keep);
    box.setEscapeButton(keep);
    box.exec();
    return box.clickedButton() == replace;
}

// German wherever it runs.
void setLabels(QFileDialog& dialog, const char* accept) {
    for (const auto& [label, text] :
         {std::pair(QFileDialog::LookIn, "Ordner:"), std::pair(QFileDialog::FileName, "Datei&name:"),
          std::pair(QFileDialog::FileType, "Dateityp:"), std::pair(QFileDialog::Accept, accept),
          std::pair(QFileDialog::Reject, "Abbrechen")}) {
        dialog.setLabelText(label, text);
    }
}

}  // namespace

std::optional<std::string> askFileToWrite(QWidget& owner, const std::string& title, const std::string& suggestion,
                                          const std::string& kindOfFile, const std::string& ending) {
    const QString caption = QString::fromStdString(title);
    const QString suffix = QString::fromStdString(ending);
    QFileDialog dialog(&owner, caption);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilter(QString::fromStdString(kindOfFile) + " (*" + suffix + ")");
    dialog.setDefaultSuffix(suffix);
    setLabels(dialog, "&Speichern");
    // Asked here instead, in German wherever it runs.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setDirectory(QFileInfo(QString::fromStdString(suggestion)).path());
    dialog.selectFile(QString::fromStdString(suggestion));
    while (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty()) {
        const QString file = dialog.selectedFiles().constFirst();
        if (!QFileInfo::exists(file) || mayBeReplaced(owner, caption, file)) {
            return file.toStdString();
        }
    }
    return std::nullopt;
}

std::optional<std::string> askFileToRead(QWidget& owner, const std::string& title, const std::string& folder) {
    QFileDialog dialog(&owner, QString::fromStdString(title), QString::fromStdString(folder), "Alle Dateien (*)");
    dialog.setFileMode(QFileDialog::ExistingFile);
    setLabels(dialog, "Ö&ffnen");
    const bool chosen = dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty();
    return chosen ? std::optional(dialog.selectedFiles().constFirst().toStdString()) : std::nullopt;
}

}  // namespace platform_linux::qt
