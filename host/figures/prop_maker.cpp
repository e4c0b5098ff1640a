#include "host/figures/prop_maker.h"

#include "dznode.h"
#include "dzobject.h"
#include "dzundostack.h"

namespace quillon {

DzNode* makeProp(const QString& name, const DzVec3& min, const DzVec3& max)
{
    DzUndoStackLock unrecorded;
    DzBox3 box;
    box.include(min);
    box.include(max);
    DzObject* object = new DzObject(name);
    object->setGeometryBox(box);
    DzNode* prop = new DzNode(name);
    prop->setObject(object);
    return prop;
}

} // namespace quillon
