#pragma once

#include "ModelInterface.h"

// One page class per model; each is the shared page with its model's table.

class AlderInterface : public ModelInterface
{
    Q_OBJECT
public:
    explicit AlderInterface(QWidget *parent = nullptr);
};

class BirchInterface : public ModelInterface
{
    Q_OBJECT
public:
    explicit BirchInterface(QWidget *parent = nullptr);
};

class CedarInterface : public ModelInterface
{
    Q_OBJECT
public:
    explicit CedarInterface(QWidget *parent = nullptr);
};

class LarchInterface : public ModelInterface
{
    Q_OBJECT
public:
    explicit LarchInterface(QWidget *parent = nullptr);
};

class MapleInterface : public ModelInterface
{
    Q_OBJECT
public:
    explicit MapleInterface(QWidget *parent = nullptr);
};

class RowanInterface : public ModelInterface
{
    Q_OBJECT
public:
    explicit RowanInterface(QWidget *parent = nullptr);
};

class WillowInterface : public ModelInterface
{
    Q_OBJECT
public:
    explicit WillowInterface(QWidget *parent = nullptr);
};
