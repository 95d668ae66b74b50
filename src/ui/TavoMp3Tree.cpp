#include "ui/TavoMp3Tree.h"

#include <QDir>
#include <QFileSystemModel>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

TavoMp3Tree::TavoMp3Tree(QWidget* parent) : ColoredWindow(parent, Qt::Window) {
    setObjectName(QStringLiteral("TavoMp3Tree"));
    setWindowTitle(QStringLiteral("Verzeichnis hinzufügen"));
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(8, 8, 8, 8);

    m_model = new QFileSystemModel(this);
    m_model->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
    m_model->setRootPath(QDir::rootPath());
    FTree = new QTreeView(this);
    FTree->setObjectName(QStringLiteral("FTree"));
    FTree->setAccessibleName(QStringLiteral("Verzeichnisse"));
    FTree->setModel(m_model);
    for (int column = 1; column < m_model->columnCount(); ++column)
        FTree->hideColumn(column);
    FTree->header()->hide();
    const QModelIndex home = m_model->index(QDir::homePath());
    FTree->setCurrentIndex(home);
    FTree->scrollTo(home);
    FTree->expand(home);
    outer->addWidget(FTree, 1);
    addFieldControl(FTree);

    auto* row = new QHBoxLayout;
    BOK = new QPushButton(QStringLiteral("OK"), this);
    BOK->setObjectName(QStringLiteral("BOK"));
    addButtonControl(BOK);
    row->addStretch(1);
    row->addWidget(BOK);
    outer->addLayout(row);
    resize(360, 420);
}
