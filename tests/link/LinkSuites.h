#pragma once

#include <QObject>

#include <memory>

// The suites of tst_link_protocol; each is defined in the file of its name.
std::unique_ptr<QObject> makeLineWordsSuite();
std::unique_ptr<QObject> makeLineDecoderSuite();
std::unique_ptr<QObject> makeFieldReadersSuite();
std::unique_ptr<QObject> makeSweepSnapshotSuite();
std::unique_ptr<QObject> makeRecordsSuite();
std::unique_ptr<QObject> makeEnvelopesSuite();
