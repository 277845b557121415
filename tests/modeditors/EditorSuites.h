#pragma once

#include <QObject>
#include <memory>

std::unique_ptr<QObject> makeEditorFormSuite();
std::unique_ptr<QObject> makeNumericFieldsSuite();
std::unique_ptr<QObject> makeEditorTextsSuite();
std::unique_ptr<QObject> makeDigitalStateSuite();
std::unique_ptr<QObject> makeDigitalEditsSuite();
std::unique_ptr<QObject> makeMultitoneStateSuite();
std::unique_ptr<QObject> makeMultitoneEditsSuite();
