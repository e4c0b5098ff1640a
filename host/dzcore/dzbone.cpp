#include "dzbone.h"

DzBone::DzBone(const QString& name)
    : DzNode(name)
{
}
