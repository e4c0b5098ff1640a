#include "host/posebench/scene_tree_panel.h"

#include "host/posebench/dark_theme.h"

#include "dzbone.h"
#include "dzscene.h"
#include "dzskeleton.h"

#include <QLineEdit>
#include <QPainter>
#include <QSet>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

// Says so when there is nothing in it.
class NodeTree : public QTreeWidget {
protected:
    void paintEvent(QPaintEvent* event) override
    {
        QTreeWidget::paintEvent(event);
        for (int i = 0; i < topLevelItemCount(); ++i)
            if (!topLevelItem(i)->isHidden())
                return;
        QPainter painter(viewport());
        quillon::paintNote(&painter, viewport()->rect(),
            topLevelItemCount() ? tr("No node of that name") : tr("The scene is empty"));
    }
};

} // namespace

DzSceneTreePane::DzSceneTreePane()
    : DzPane(tr("Scene"))
    , m_search(new QLineEdit)
    , m_tree(new NodeTree)
    , m_syncing(false)
{
    m_search->setPlaceholderText(tr("Find a node"));
    m_search->setClearButtonEnabled(true);
    m_tree->setObjectName("sceneTree");
    m_tree->setHeaderHidden(true);
    m_tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_tree->setUniformRowHeights(true);
    m_tree->setIndentation(14);
    QVBoxLayout* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 0);
    layout->setSpacing(5);
    layout->addWidget(m_search);
    layout->addWidget(m_tree, 1);
    connect(m_search, SIGNAL(textChanged(QString)), SLOT(filter(QString)));
    connect(m_tree, SIGNAL(itemSelectionChanged()), SLOT(takeOverFromTree()));
    connect(m_tree, SIGNAL(currentItemChanged(QTreeWidgetItem*, QTreeWidgetItem*)),
        SLOT(takeOverFromTree()), Qt::QueuedConnection);
    connect(dzScene, SIGNAL(nodeListChanged()), SLOT(rebuild()));
    connect(dzScene, SIGNAL(sceneCleared()), SLOT(rebuild()));
    connect(dzScene, SIGNAL(sceneChanged()), SLOT(relabel()));
    connect(dzScene, SIGNAL(nodeSelectionListChanged()), SLOT(takeOverFromScene()));
    connect(dzScene, SIGNAL(primarySelectionChanged(DzNode*)), SLOT(takeOverFromScene()));
    rebuild();
}

void DzSceneTreePane::addBelow(DzNode* node, QTreeWidgetItem* parent)
{
    QTreeWidgetItem* item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(m_tree);
    item->setText(0, node->getLabel());
    item->setToolTip(0, node->getName());
    m_items.insert(node, item);
    m_nodes.insert(item, node);
    for (int i = 0; i < node->getNumNodeChildren(); ++i)
        addBelow(node->getNodeChild(i), item);
    // Open down to the joints of the trunk: deeper is a matter of taste.
    item->setExpanded(!qobject_cast<DzBone*>(node) || node->getName() == "hip");
}

void DzSceneTreePane::rebuild()
{
    QSet<DzNode*> open;
    const QSet<DzNode*> known = QSet<DzNode*>(m_items.keyBegin(), m_items.keyEnd());
    for (auto i = m_items.constBegin(); i != m_items.constEnd(); ++i)
        if (i.value()->isExpanded())
            open.insert(i.key());
    m_syncing = true;
    m_items.clear();
    m_nodes.clear();
    m_tree->clear();
    for (int i = 0; i < dzScene->getNumNodes(); ++i)
        if (dzScene->getNode(i)->isRootNode())
            addBelow(dzScene->getNode(i), nullptr);
    for (auto i = m_items.constBegin(); i != m_items.constEnd(); ++i)
        if (known.contains(i.key()))
            i.value()->setExpanded(open.contains(i.key()));
    m_syncing = false;
    filter(m_search->text());
    takeOverFromScene();
}

// Names, labels and parents may have changed in the scene.
void DzSceneTreePane::relabel()
{
    bool same = m_items.size() == dzScene->getNumNodes();
    for (int i = 0; same && i < dzScene->getNumNodes(); ++i) {
        DzNode* node = dzScene->getNode(i);
        QTreeWidgetItem* item = m_items.value(node);
        same = item && m_nodes.value(item->parent()) == node->getNodeParent();
        if (same && item->text(0) != node->getLabel())
            item->setText(0, node->getLabel());
    }
    if (!same)
        rebuild();
}

void DzSceneTreePane::takeOverFromTree()
{
    if (m_syncing)
        return;
    m_syncing = true;
    for (auto i = m_items.constBegin(); i != m_items.constEnd(); ++i)
        if (i.key()->isSelected() != i.value()->isSelected())
            i.key()->select(i.value()->isSelected());
    QTreeWidgetItem* current = m_tree->currentItem();
    if (current && current->isSelected())
        dzScene->setPrimarySelection(m_nodes.value(current));
    m_syncing = false;
}

void DzSceneTreePane::takeOverFromScene()
{
    if (m_syncing)
        return;
    m_syncing = true;
    QTreeWidgetItem* primary = m_items.value(dzScene->getPrimarySelection());
    m_tree->setCurrentItem(primary, 0, QItemSelectionModel::NoUpdate);
    for (auto i = m_items.constBegin(); i != m_items.constEnd(); ++i)
        i.value()->setSelected(i.key()->isSelected());
    if (primary)
        m_tree->scrollToItem(primary);
    m_syncing = false;
}

static bool showMatches(QTreeWidgetItem* item, const QString& text)
{
    bool shown = item->text(0).contains(text, Qt::CaseInsensitive);
    for (int i = 0; i < item->childCount(); ++i)
        shown |= showMatches(item->child(i), text);
    item->setHidden(!shown);
    if (shown && !text.isEmpty())
        item->setExpanded(true);
    return shown;
}

void DzSceneTreePane::filter(const QString& text)
{
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i)
        showMatches(m_tree->topLevelItem(i), text.trimmed());
}
