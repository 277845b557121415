#pragma once

#include <QObject>
#include <memory>

std::unique_ptr<QObject> makeSweepFormSuite();
std::unique_ptr<QObject> makeSweepStateSuite();
std::unique_ptr<QObject> makeSweepEditsSuite();
std::unique_ptr<QObject> makeSweepWalkSuite();
