#pragma once

#include <QDialog>
#include <QList>

class QLineEdit;
class QPushButton;
class SkinControl;
class QRadioButton;

// The quick-search window "Schnellsuche": a text, one of three modes, OK and cancel. It only asks;
// the search itself runs in the core when searchRequested arrives.
class TavoMP3QuickSearch : public QDialog {
    Q_OBJECT
public:
    explicit TavoMP3QuickSearch(QWidget* parent = nullptr);

    QLineEdit* FSearchtext = nullptr;
    QList<QRadioButton*> RSearchMode;
    SkinControl* OKButton = nullptr;
    SkinControl* CancelButton = nullptr;

    // The mode word of the selected option ("index", "fulltext" or "album").
    QString selectedMode() const;
    // Puts the first typed character into the text field, cursor behind it.
    void startWith(const QString& typed);

    void OKButtonClick();
    void CancelButtonClick();

signals:
    void searchRequested(const QString& text, const QString& mode);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
