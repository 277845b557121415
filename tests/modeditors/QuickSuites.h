#pragma once

#include <QObject>
#include <memory>

std::unique_ptr<QObject> makeQuickFormSuite();
std::unique_ptr<QObject> makeQuickStateSuite();
std::unique_ptr<QObject> makeQuickFieldsSuite();
std::unique_ptr<QObject> makeQuickFolderSuite();
std::unique_ptr<QObject> makeQuickRootSuite();
std::unique_ptr<QObject> makeQuickLoadSuite();
std::unique_ptr<QObject> makeQuickLocateSuite();
std::unique_ptr<QObject> makeQuickFollowSuite();
