// Administration: the vocabulary of a receiver's administration (hardware
// state, measured quantities per mode, driver model and command, data streams,
// speed) and the metadata of one sensor quantity.
#ifndef HALVANE_ADMINISTRATION_ADMINISTRATION_H
#define HALVANE_ADMINISTRATION_ADMINISTRATION_H

#include "sensormetadata.h"

namespace HALVANE {

class Administration : public QUILLET::IQuilletObject
{
    HALVANE_DATA_CLASS(Administration)

    struct structADMCW {
        QString Name;
        QString Selflag;
        QString Guiname;
    };
    struct structADMDriverType {
        QString Name;
        int Helpid;
    };
    struct structADMIFPan {
        QString Name;
        QString Selflag;
        QString Guiname;
    };
    struct structADMDF {
        QString Name;
        QString Selflag;
        QString Guiname;
        QString Itemname;
    };
    struct structADMGeneral {
        QString Name;
        QString Selflag;
        QString Guiname;
    };
    struct structADMMassDataStreams {
        QString Name;
        QString Tag;
    };

    HALVANE_ENUM_FIELD(HardwareStatus)
    HALVANE_ENUM_NAMES(HardwareStatus)

    HALVANE_ENUM_FIELD(CW)
    HALVANE_ENUM_ROWS(CW, structADMCW)
    HALVANE_ENUM_COLUMN(CW, Selflag)
    HALVANE_ENUM_COLUMN(CW, Guiname)

    HALVANE_NESTED_FIELD(SensorMetaData, SensorMetaData)

    HALVANE_ENUM_FIELD(DriverType)
    HALVANE_ENUM_ROWS(DriverType, structADMDriverType)
    HALVANE_ENUM_HELPID(DriverType)

    HALVANE_ENUM_FIELD(DrvCommands)
    HALVANE_ENUM_NAMES(DrvCommands)

    HALVANE_ENUM_FIELD(RDSState)
    HALVANE_ENUM_NAMES(RDSState)

    HALVANE_ENUM_FIELD(ClearGroup)
    HALVANE_ENUM_NAMES(ClearGroup)

    HALVANE_ENUM_FIELD(IFPan)
    HALVANE_ENUM_ROWS(IFPan, structADMIFPan)
    HALVANE_ENUM_COLUMN(IFPan, Selflag)
    HALVANE_ENUM_COLUMN(IFPan, Guiname)

    HALVANE_ENUM_FIELD(DF)
    HALVANE_ENUM_ROWS(DF, structADMDF)
    HALVANE_ENUM_COLUMN(DF, Selflag)
    HALVANE_ENUM_COLUMN(DF, Guiname)
    HALVANE_ENUM_COLUMN(DF, Itemname)

    HALVANE_ENUM_FIELD(General)
    HALVANE_ENUM_ROWS(General, structADMGeneral)
    HALVANE_ENUM_COLUMN(General, Selflag)
    HALVANE_ENUM_COLUMN(General, Guiname)

    HALVANE_ENUM_FIELD(MassDataStreams)
    HALVANE_ENUM_ROWS(MassDataStreams, structADMMassDataStreams)
    HALVANE_ENUM_COLUMN(MassDataStreams, Tag)

    HALVANE_ENUM_FIELD(Speed)
    HALVANE_ENUM_NAMES(Speed)

};

} // namespace HALVANE

HALVANE_DECLARE_TYPE(Administration)

#endif
