// dzscene.h - the nodes, the selection and the clock. One scene exists: dzScene.
// Selection and time are not recorded by the undo stack; nodes and the animation range are.
#pragma once

#include "dznode.h"
#include "dztimerange.h"

class DzSkeleton;

class DZCORE_EXPORT DzScene : public QObject {
    Q_OBJECT
public:
    DzScene(); // becomes dzScene
    ~DzScene() override; // deletes its nodes

    DzNode* getPrimarySelection() const; // null: nothing is selected
    bool setPrimarySelection(DzNode*); // false unless the node is selected; null: deselects all
    int getNumSelectedNodes() const;
    DzNode* getSelectedNode(int i) const; // in order of selection
    void selectAllNodes(bool onOff);

    DzTime getTime() const;
    void setTime(DzTime);
    DzTime getTimeStep() const; // ticks a frame, 160
    DzTimeRange getAnimRange() const;
    void setAnimRange(const DzTimeRange&); // ends the wrong way round are exchanged

    int getNumNodes() const; // roots and everything below them, parents first
    DzNode* getNode(int i) const;
    DzNode* findNode(const QString& name) const; // the first of that name
    int getNumSkeletons() const;
    DzSkeleton* getSkeleton(int i) const;
    DzSkeleton* findSkeleton(const QString& name) const;

    bool addNode(DzNode*); // takes ownership of a root node; undoable
    bool removeNode(DzNode*); // with everything below it; undoable
    void clear(); // removes and deletes everything, forgets all undo steps

    // Grows with every change of any value, flag or structure; what shows the scene compares it.
    unsigned changeCount() const;

signals:
    void primarySelectionChanged(DzNode*);
    void nodeSelectionListChanged();
    void timeChanged(DzTime);
    void animRangeChanged();
    void nodeAdded(DzNode*);
    void nodeRemoved(DzNode*);
    void nodeListChanged();
    void sceneCleared();
    void sceneChanged(); // once for any number of changes until the event loop runs

private slots:
    void announceChange();

private:
    friend class DzNode;
    void nodeSelected(DzNode*, bool on);
    void structureDidChange(); // node lists are made anew when asked for
    void rebuildNodeList() const;
    void insertRoot(DzNode*, int index);
    int takeRoot(DzNode*);

    QList<DzNode*> m_roots;
    QList<DzNode*> m_selected;
    DzNode* m_primary;
    DzTime m_time;
    DzTimeRange m_animRange;
    mutable bool m_nodesValid;
    mutable DzNodeList m_nodes;
    mutable QList<DzSkeleton*> m_skeletons;
};

extern DZCORE_EXPORT DzScene* dzScene; // null before the scene exists
