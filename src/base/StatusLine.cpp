#include "base/StatusLine.h"

void StatusLine::setText(const QString& text) {
    m_text = text;
    emit textChanged(m_text);
}
