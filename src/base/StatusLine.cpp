#include "base/StatusLine.h"

void StatusLine::setText(const QString& text) {
    m_text = text.size() > kMaxLength ? text.right(kMaxLength) : text;
    emit textChanged(m_text);
}
