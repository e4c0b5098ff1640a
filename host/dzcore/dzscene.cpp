#include "dzscene.h"

#include "dzclock.h"
#include "dzhostcalls.h"
#include "dzskeleton.h"
#include "dzundoitem.h"
#include "dzundostack.h"

#include <QMetaType>

#include <utility>

DzScene* dzScene = nullptr;
DzTime g_sceneTime = 0;
unsigned g_valueEpoch = 1;

static const DzTime kTimeStep = 160; // 30 frames a second
static const DzTime kDefaultRangeEnd = 4800; // 30 frames

static unsigned g_changeCount = 0;
static bool g_changeAnnounced = false;

void noteSceneChange()
{
    ++g_changeCount;
    if (!g_changeAnnounced && dzScene) {
        g_changeAnnounced = true;
        QMetaObject::invokeMethod(dzScene, "announceChange", Qt::QueuedConnection);
    }
}

static void startEpoch()
{
    if (++g_valueEpoch == 0)
        ++g_valueEpoch;
}

DzScene::DzScene()
    : m_primary(nullptr)
    , m_time(0)
    , m_animRange(0, kDefaultRangeEnd)
    , m_nodesValid(false)
{
    dzScene = this;
    qRegisterMetaType<DzTime>("DzTime"); // scripts connect to timeChanged
    g_sceneTime = 0;
    g_changeAnnounced = false;
    startEpoch();
}

DzScene::~DzScene()
{
    clear();
    if (dzScene == this)
        dzScene = nullptr;
    g_sceneTime = 0;
    startEpoch();
}

void DzScene::announceChange()
{
    g_changeAnnounced = false;
    emit sceneChanged();
}

unsigned DzScene::changeCount() const
{
    return g_changeCount;
}

// ---- selection ------------------------------------------------------------------------------

DzNode* DzScene::getPrimarySelection() const
{
    return DZ_HOST_CALL("getPrimarySelection") ? nullptr : m_primary;
}

bool DzScene::setPrimarySelection(DzNode* node)
{
    if (!node) {
        selectAllNodes(false);
        return true;
    }
    if (!m_selected.contains(node))
        return false;
    if (m_primary != node) {
        m_primary = node;
        noteSceneChange();
        emit primarySelectionChanged(node);
    }
    return true;
}

int DzScene::getNumSelectedNodes() const
{
    return m_selected.size();
}

DzNode* DzScene::getSelectedNode(int i) const
{
    return i >= 0 && i < m_selected.size() ? m_selected.at(i) : nullptr;
}

void DzScene::selectAllNodes(bool onOff)
{
    if (onOff) {
        rebuildNodeList();
        const DzNodeList nodes = m_nodes;
        for (DzNode* node : nodes)
            node->select(true);
        return;
    }
    while (!m_selected.isEmpty())
        m_selected.last()->select(false);
}

void DzScene::nodeSelected(DzNode* node, bool on)
{
    if (on)
        m_selected.append(node);
    else
        m_selected.removeOne(node);
    DzNode* const primary = m_primary;
    if (on && !m_primary)
        m_primary = node;
    else if (!on && m_primary == node)
        m_primary = m_selected.isEmpty() ? nullptr : m_selected.last();
    noteSceneChange();
    if (m_primary != primary)
        emit primarySelectionChanged(m_primary);
    emit nodeSelectionListChanged();
}

// ---- time -----------------------------------------------------------------------------------

DzTime DzScene::getTime() const
{
    DZ_HOST_SEEN("getTime");
    return m_time;
}

void DzScene::setTime(DzTime t)
{
    if (t == m_time)
        return;
    m_time = t;
    g_sceneTime = t;
    startEpoch();
    noteSceneChange();
    emit timeChanged(t);
}

DzTime DzScene::getTimeStep() const
{
    return kTimeStep;
}

DzTimeRange DzScene::getAnimRange() const
{
    return m_animRange;
}

void DzScene::setAnimRange(const DzTimeRange& wanted)
{
    const DzTimeRange range(
        qMin(wanted.getStart(), wanted.getEnd()), qMax(wanted.getStart(), wanted.getEnd()));
    if (range == m_animRange)
        return;
    DzTimeRange other = m_animRange;
    dzRecordExchange([this, other]() mutable {
        std::swap(m_animRange, other);
        noteSceneChange();
        emit animRangeChanged();
    });
    m_animRange = range;
    noteSceneChange();
    emit animRangeChanged();
}

// ---- nodes ----------------------------------------------------------------------------------

static void appendBelow(DzNode* node, DzNodeList* list)
{
    list->append(node);
    for (int i = 0; i < node->getNumNodeChildren(); ++i)
        appendBelow(node->getNodeChild(i), list);
}

void DzScene::rebuildNodeList() const
{
    if (m_nodesValid)
        return;
    m_nodes.clear();
    m_skeletons.clear();
    for (DzNode* root : m_roots)
        appendBelow(root, &m_nodes);
    for (DzNode* node : std::as_const(m_nodes))
        if (DzSkeleton* skeleton = qobject_cast<DzSkeleton*>(node))
            m_skeletons.append(skeleton);
    m_nodesValid = true;
}

void DzScene::structureDidChange()
{
    m_nodesValid = false;
    noteSceneChange();
}

int DzScene::getNumNodes() const
{
    rebuildNodeList();
    return m_nodes.size();
}

DzNode* DzScene::getNode(int i) const
{
    return i >= 0 && i < getNumNodes() ? m_nodes.at(i) : nullptr;
}

DzNode* DzScene::findNode(const QString& name) const
{
    rebuildNodeList();
    for (DzNode* node : std::as_const(m_nodes))
        if (node->getName() == name)
            return node;
    return nullptr;
}

int DzScene::getNumSkeletons() const
{
    rebuildNodeList();
    return m_skeletons.size();
}

DzSkeleton* DzScene::getSkeleton(int i) const
{
    return i >= 0 && i < getNumSkeletons() ? m_skeletons.at(i) : nullptr;
}

DzSkeleton* DzScene::findSkeleton(const QString& name) const
{
    rebuildNodeList();
    for (DzSkeleton* skeleton : std::as_const(m_skeletons))
        if (skeleton->getName() == name)
            return skeleton;
    return nullptr;
}

void DzScene::insertRoot(DzNode* node, int index)
{
    m_roots.insert(qBound(0, index, m_roots.size()), node);
}

int DzScene::takeRoot(DzNode* node)
{
    const int index = m_roots.indexOf(node);
    m_roots.removeAt(index);
    return index;
}

bool DzScene::addNode(DzNode* node)
{
    if (!node || node->m_scene || node->m_parent)
        return false;
    node->recordPlace();
    node->moveTo({this, nullptr, m_roots.size()});
    return true;
}

bool DzScene::removeNode(DzNode* node)
{
    if (!node || node->m_scene != this)
        return false;
    node->recordPlace();
    node->detach();
    return true;
}

void DzScene::clear()
{
    if (dzUndoStack)
        dzUndoStack->clearAll();
    selectAllNodes(false);
    const QList<DzNode*> roots = m_roots;
    for (DzNode* root : roots) {
        root->detach();
        delete root;
    }
    setTime(0);
    m_animRange = DzTimeRange(0, kDefaultRangeEnd);
    structureDidChange();
    emit animRangeChanged();
    emit sceneCleared();
}
