-- Permanent tables read and written by the screen. The script may be run again at any time: what exists is left alone.
-- Chart codes, natures and signs are DECIMAL because the screen binds them as numerics: a column of a lower type
-- would be converted row by row and its index not used.

-- Charts of accounts of the general ledger (COGE).
IF OBJECT_ID('CG10_DESPDC') IS NULL
CREATE TABLE CG10_DESPDC
(
    CG10_GRUPPO         DECIMAL(2)      NOT NULL,
    CG10_DESCR          NVARCHAR(60)    NOT NULL,
    CG10_NUMLIVELLI     SMALLINT        NOT NULL,
    CONSTRAINT PK_CG10_DESPDC PRIMARY KEY CLUSTERED (CG10_GRUPPO)
)
GO

-- Accounts of the general-ledger charts. The key is also the order in which the screen numbers them.
IF OBJECT_ID('CG24_TABPDC') IS NULL
CREATE TABLE CG24_TABPDC
(
    CG24_GRUPPO_CG10    DECIMAL(2)      NOT NULL,
    CG24_CONTO          NCHAR(10)       NOT NULL,
    CG24_DESCR          NVARCHAR(80)    NOT NULL,
    CG24_INDTIPOCONTO   DECIMAL(1)      NOT NULL,
    CONSTRAINT PK_CG24_TABPDC PRIMARY KEY CLUSTERED (CG24_GRUPPO_CG10, CG24_CONTO)
)
GO

-- Charts of cost accounting: of accounts (PC01_TIPOPDC 1) and of cost items (PC01_TIPOPDC 2).
-- PC01_LUNGGR1 to PC01_LUNGGR5 cut a code into its display groups; 0 means that the group is not used.
IF OBJECT_ID('PC01_PDC') IS NULL
CREATE TABLE PC01_PDC
(
    PC01_CODPDC         DECIMAL(3)      NOT NULL,
    PC01_DESCR          NVARCHAR(60)    NOT NULL,
    PC01_TIPOPDC        SMALLINT        NOT NULL,
    PC01_SEPARATORE     NCHAR(1)        NOT NULL,
    PC01_LUNGGR1        SMALLINT        NOT NULL,
    PC01_LUNGGR2        SMALLINT        NOT NULL,
    PC01_LUNGGR3        SMALLINT        NOT NULL,
    PC01_LUNGGR4        SMALLINT        NOT NULL,
    PC01_LUNGGR5        SMALLINT        NOT NULL,
    CONSTRAINT PK_PC01_PDC PRIMARY KEY CLUSTERED (PC01_CODPDC)
)
GO

-- Cost accounts and cost items. PC03_DITTA_CG18 is 0 for a code common to all companies, else the company it is
-- reserved to. PC03_INDTIPOCONTO is the value of the kind's bit in the typology mask, 0 for a group or a cost item.
IF OBJECT_ID('PC03_ANAGPDC') IS NULL
CREATE TABLE PC03_ANAGPDC
(
    PC03_CODPDC_PC01    DECIMAL(3)      NOT NULL,
    PC03_CONTO          NCHAR(15)       NOT NULL,
    PC03_DITTA_CG18     DECIMAL(5)      NOT NULL,
    PC03_DESCR          NVARCHAR(80)    NOT NULL,
    PC03_INDTIPOCONTO   INT             NOT NULL,
    PC03_FLGANALITICO   BIT             NOT NULL,
    CONSTRAINT PK_PC03_ANAGPDC PRIMARY KEY CLUSTERED (PC03_CODPDC_PC01, PC03_CONTO)
)
GO

-- Companies. The analytic-accounting flag is the text '1' or '0', as the company settings hold it.
IF OBJECT_ID('CG18_DITTE') IS NULL
CREATE TABLE CG18_DITTE
(
    CG18_DITTA          DECIMAL(5)      NOT NULL,
    CG18_RAGSOC         NVARCHAR(80)    NOT NULL,
    CG18_CODPDC_CG10    DECIMAL(2)      NOT NULL,
    CG18_CODCOIN_PC01   DECIMAL(3)      NULL,
    CG18_CODVDS_PC01    DECIMAL(3)      NULL,
    CG18_FLGANALITICA   NCHAR(1)        NOT NULL,
    CG18_PARANALITICA   NVARCHAR(20)    NULL,
    CG18_FLGVDS         BIT             NOT NULL,
    CONSTRAINT PK_CG18_DITTE PRIMARY KEY CLUSTERED (CG18_DITTA)
)
GO

-- Transaction types. CI03_DITTA_CG18 is 0 for a causale common to all companies, else the company it is reserved to.
IF OBJECT_ID('CI03_CAUSALI') IS NULL
CREATE TABLE CI03_CAUSALI
(
    CI03_CODCAUS        NCHAR(4)        NOT NULL,
    CI03_DITTA_CG18     DECIMAL(5)      NOT NULL,
    CI03_DESCR          NVARCHAR(60)    NOT NULL,
    CONSTRAINT PK_CI03_CAUSALI PRIMARY KEY CLUSTERED (CI03_CODCAUS)
)
GO

-- Kinds of cost account that a causale admits on each side (sign 1 Dare, 2 Avere). No row: no kind is admitted.
IF OBJECT_ID('CI11_CONTROLLOCONTI') IS NULL
CREATE TABLE CI11_CONTROLLOCONTI
(
    CI11_CODCAUS_CI03   NCHAR(4)        NOT NULL,
    CI11_SEGNO          DECIMAL(1)      NOT NULL,
    CI11_FLGCOLLEG      BIT             NOT NULL,
    CI11_FLGTRANSIT     BIT             NOT NULL,
    CI11_FLGCOMPET      BIT             NOT NULL,
    CI11_FLGCDC         BIT             NOT NULL,
    CI11_FLGLAVPROG     BIT             NOT NULL,
    CI11_FLGMAGAZ       BIT             NOT NULL,
    CI11_FLGMARGLORDI   BIT             NOT NULL,
    CI11_FLGMARGNETTI   BIT             NOT NULL,
    CI11_FLGRISULT      BIT             NOT NULL,
    CI11_FLGALTRITIPI   BIT             NOT NULL,
    CONSTRAINT PK_CI11_CONTROLLOCONTI PRIMARY KEY CLUSTERED (CI11_CODCAUS_CI03, CI11_SEGNO)
)
GO

-- Correlations: the rows of one causale of one account, in CI15_PROG order (sign 1 Dare, 2 Avere). The account comes
-- before the causale in the key because the screen always asks by account.
IF OBJECT_ID('CI15_CORRCONTICOGE') IS NULL
CREATE TABLE CI15_CORRCONTICOGE
(
    CI15_DITTA_CG18     DECIMAL(5)      NOT NULL,
    CI15_CODCAUS_CI03   NCHAR(4)        NOT NULL,
    CI15_CODPDC_CG10    DECIMAL(2)      NOT NULL,
    CI15_CONTO_CG24     NCHAR(10)       NOT NULL,
    CI15_PROG           DECIMAL(3)      NOT NULL,
    CI15_CODPDC_PC01    DECIMAL(3)      NOT NULL,
    CI15_CONTO_PC03     NCHAR(15)       NOT NULL,
    CI15_CODVDS_PC01    DECIMAL(3)      NULL,
    CI15_VDS_PC03       NCHAR(15)       NULL,
    CI15_INDSEGNO       DECIMAL(1)      NOT NULL,
    CI15_PERC           DECIMAL(5, 2)   NULL,
    CONSTRAINT PK_CI15_CORRCONTICOGE PRIMARY KEY CLUSTERED
        (CI15_DITTA_CG18, CI15_CODPDC_CG10, CI15_CONTO_CG24, CI15_CODCAUS_CI03, CI15_PROG)
)
GO

-- Accounts activated for cost accounting: one row for each account of a company.
IF OBJECT_ID('CI35_CONTIATTIVI') IS NULL
CREATE TABLE CI35_CONTIATTIVI
(
    CI35_DITTA_CG18     DECIMAL(5)      NOT NULL,
    CI35_GRUPPO_CG10    DECIMAL(2)      NOT NULL,
    CI35_CONTO_CG24     NCHAR(10)       NOT NULL,
    CONSTRAINT PK_CI35_CONTIATTIVI PRIMARY KEY CLUSTERED (CI35_DITTA_CG18, CI35_GRUPPO_CG10, CI35_CONTO_CG24)
)
GO
