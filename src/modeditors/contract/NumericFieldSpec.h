#pragma once

#include <QString>

// A numeric field of an editor, as the on-screen keyboard needs to know it.
struct NumericFieldSpec
{
    QString key;      // as in the editor state
    QString title;    // translated
    QString unitType; // an Adapters::...::adapterType(); empty: a plain number
    QString unitText; // the unit to open the keyboard in; empty: by magnitude
    QString auxText;  // an opaque tag for the keyboard
    // In the base unit of unitType.
    double value = 0;
    double step = 0;
    double minimum = 0; // inclusive; only with hasMinimum
    double maximum = 0; // inclusive; only with hasMaximum
    int decimals = -1;  // -1: as many as it takes
    bool hasStep = false;
    bool hasMinimum = false;
    bool hasMaximum = false;
    bool integerOnly = false; // rounded when committed

    // Makes this the description of another field, without unit, tag and bounds: those are set after it.
    // A step that is not above 0 is none.
    void describe(const QString& fieldKey, const QString& fieldTitle, double fieldValue, double fieldStep,
                  int fieldDecimals = -1, bool isIntegerOnly = false);
    void setMinimum(double bound);
    void setMaximum(double bound);
};
