#include "ModelPages.h"

#include "ModelSpec.h"

AlderInterface::AlderInterface(QWidget *parent)
    : ModelInterface(modelSpec(0), parent)
{
}

BirchInterface::BirchInterface(QWidget *parent)
    : ModelInterface(modelSpec(1), parent)
{
}

CedarInterface::CedarInterface(QWidget *parent)
    : ModelInterface(modelSpec(2), parent)
{
}

LarchInterface::LarchInterface(QWidget *parent)
    : ModelInterface(modelSpec(3), parent)
{
}

MapleInterface::MapleInterface(QWidget *parent)
    : ModelInterface(modelSpec(4), parent)
{
}

RowanInterface::RowanInterface(QWidget *parent)
    : ModelInterface(modelSpec(5), parent)
{
}

WillowInterface::WillowInterface(QWidget *parent)
    : ModelInterface(modelSpec(6), parent)
{
}
