#pragma once

#include <QObject>

#include <memory>

// The suites of tst_simulator_modulation; each is defined in the file of its name.
std::unique_ptr<QObject> makeItemsSuite();
std::unique_ptr<QObject> makeBoundsSuite();
std::unique_ptr<QObject> makeProfilesSuite();
std::unique_ptr<QObject> makeWaveformFileSuite();
std::unique_ptr<QObject> makeSampleWaveformsSuite();
std::unique_ptr<QObject> makeWaveformsSuite();
std::unique_ptr<QObject> makeOverTheLinkSuite();
