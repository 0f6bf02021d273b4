#pragma once

namespace veldran::ado {

// Names and numbers are those of ActiveX Data Objects 2.6: hosts, scripts and traces speak in them.

enum CommandTypeEnum {
    adCmdUnspecified = -1,
    adCmdText = 1,
    adCmdTable = 2,
    adCmdStoredProc = 4,
    adCmdUnknown = 8
};

enum ExecuteOptionEnum { adOptionUnspecified = -1, adExecuteNoRecords = 0x80 };

constexpr int operator|(CommandTypeEnum type, ExecuteOptionEnum option) {
    return static_cast<int>(type) | static_cast<int>(option);
}

enum ConnectOptionEnum { adConnectUnspecified = -1 };

enum DataTypeEnum {
    adEmpty = 0,
    adSmallInt = 2,
    adInteger = 3,
    adDouble = 5,
    adBoolean = 11,
    adDecimal = 14,
    adBigInt = 20,
    adChar = 129,
    adWChar = 130,
    adNumeric = 131,
    adVarChar = 200,
    adVarWChar = 202
};

enum ParameterDirectionEnum {
    adParamUnknown = 0,
    adParamInput = 1,
    adParamOutput = 2,
    adParamInputOutput = 3,
    adParamReturnValue = 4
};

enum ObjectStateEnum { adStateClosed = 0, adStateOpen = 1 };

enum CursorTypeEnum {
    adOpenUnspecified = -1,
    adOpenForwardOnly = 0,
    adOpenKeyset = 1,
    adOpenDynamic = 2,
    adOpenStatic = 3
};

enum LockTypeEnum {
    adLockUnspecified = -1,
    adLockReadOnly = 1,
    adLockPessimistic = 2,
    adLockOptimistic = 3,
    adLockBatchOptimistic = 4
};

enum CursorLocationEnum { adUseServer = 2, adUseClient = 3 };

enum PositionEnum { adPosEOF = -3, adPosBOF = -2, adPosUnknown = -1 };

enum EditModeEnum { adEditNone = 0, adEditInProgress = 1, adEditAdd = 2, adEditDelete = 4 };

enum AffectEnum { adAffectCurrent = 1, adAffectGroup = 2, adAffectAll = 3, adAffectAllChapters = 4 };

enum RecordStatusEnum { adRecOK = 0, adRecNew = 1, adRecModified = 2, adRecDeleted = 4, adRecUnmodified = 8 };

enum FilterGroupEnum { adFilterNone = 0, adFilterPendingRecords = 1 };

/// Numbers of the errors that the object model itself raises.
enum ErrorValueEnum {
    adErrInvalidArgument = 3001,
    adErrNoCurrentRecord = 3021,
    adErrIllegalOperation = 3219,
    adErrInTransaction = 3246,
    adErrFeatureNotAvailable = 3251,
    adErrItemNotFound = 3265,
    adErrObjectNotSet = 3420,
    adErrDataConversion = 3421,
    adErrObjectClosed = 3704,
    adErrObjectOpen = 3705,
    adErrBoundToCommand = 3707,
    adErrInvalidParamInfo = 3708,
    adErrInvalidConnection = 3709
};

/// Numbers of the provider's own errors (HRESULTs) that the object model raises in the provider's place.
enum ProviderErrorEnum {
    adErrConcurrencyViolation = -2147217864, ///< a row was changed or deleted by somebody else
    adErrKeyInsufficient = -2147467259,      ///< a key that should name one row named several
    adErrTransactionExists = -2147168237,    ///< only one transaction can be active on a session
    adErrNoTransaction = -2147168242         ///< no transaction is active
};

/// SQL Server's numbers for values that do not fit, raised before the value is sent.
enum ValueErrorEnum { sqlErrOverflow = 8115, sqlErrTextTooLong = 8152 };

} // namespace veldran::ado
