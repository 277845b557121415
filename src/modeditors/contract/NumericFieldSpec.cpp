#include "modeditors/contract/NumericFieldSpec.h"

void NumericFieldSpec::describe(const QString& fieldKey, const QString& fieldTitle, double fieldValue,
                                double fieldStep, int fieldDecimals, bool isIntegerOnly)
{
    *this = {};
    key = fieldKey;
    title = fieldTitle;
    value = fieldValue;
    step = fieldStep;
    hasStep = fieldStep > 0;
    decimals = fieldDecimals;
    integerOnly = isIntegerOnly;
}

void NumericFieldSpec::setMinimum(double bound)
{
    minimum = bound;
    hasMinimum = true;
}

void NumericFieldSpec::setMaximum(double bound)
{
    maximum = bound;
    hasMaximum = true;
}
