-- Server routines of the screen. The script may be run again at any time: each routine is dropped and created anew.

IF OBJECT_ID('FNCI_COGE_GETCODEHEADER') IS NOT NULL DROP FUNCTION FNCI_COGE_GETCODEHEADER
GO

-- Header code of an account: the prefix that every account below it starts with, the whole code for an account of the
-- last level. NULL when the number of levels is outside 2 to 5.
CREATE FUNCTION FNCI_COGE_GETCODEHEADER
(
    @LIVELLI SMALLINT,
    @CONTO NCHAR(10)
)
RETURNS NVARCHAR(10)
AS
BEGIN
    RETURN
        CASE @LIVELLI
            WHEN 2 THEN
                CASE
                    WHEN SUBSTRING(@CONTO, 6, 5) = '00000' THEN SUBSTRING(@CONTO, 1, 2)
                    ELSE @CONTO
                END
            WHEN 3 THEN
                CASE
                    WHEN SUBSTRING(@CONTO, 5, 6) = '000000' THEN SUBSTRING(@CONTO, 1, 2)
                    WHEN SUBSTRING(@CONTO, 7, 4) = '0000' THEN SUBSTRING(@CONTO, 1, 6)
                    ELSE @CONTO
                END
            WHEN 4 THEN
                CASE
                    WHEN SUBSTRING(@CONTO, 3, 8) = '00000000' THEN SUBSTRING(@CONTO, 1, 2)
                    WHEN SUBSTRING(@CONTO, 5, 6) = '000000' THEN SUBSTRING(@CONTO, 1, 4)
                    WHEN SUBSTRING(@CONTO, 7, 4) = '0000' THEN SUBSTRING(@CONTO, 1, 6)
                    ELSE @CONTO
                END
            WHEN 5 THEN
                CASE
                    WHEN SUBSTRING(@CONTO, 3, 8) = '00000000' THEN SUBSTRING(@CONTO, 1, 2)
                    WHEN SUBSTRING(@CONTO, 5, 6) = '000000' THEN SUBSTRING(@CONTO, 1, 4)
                    WHEN SUBSTRING(@CONTO, 7, 4) = '0000' THEN SUBSTRING(@CONTO, 1, 6)
                    WHEN SUBSTRING(@CONTO, 9, 2) = '00' THEN SUBSTRING(@CONTO, 1, 8)
                    ELSE @CONTO
                END
        END
END
GO

IF OBJECT_ID('FNCI03_CAUSALI') IS NOT NULL DROP FUNCTION FNCI03_CAUSALI
GO

-- The causale of that code as the company sees it: common to all companies or reserved to this one.
-- A NULL code gives every causale of the company, for lookup lists.
CREATE FUNCTION FNCI03_CAUSALI
(
    @CODCAUS NCHAR(4),
    @DITTA DECIMAL(5)
)
RETURNS TABLE
AS
RETURN
(
    SELECT
        CI03_CODCAUS
        , CI03_DESCR
        , CI03_DITTA_CG18
    FROM
        CI03_CAUSALI
    WHERE
        (@CODCAUS IS NULL OR CI03_CODCAUS = @CODCAUS)
        AND (CI03_DITTA_CG18 = 0 OR CI03_DITTA_CG18 = @DITTA)
)
GO

IF OBJECT_ID('FNPC03_ANAGPDC_COAN') IS NOT NULL DROP FUNCTION FNPC03_ANAGPDC_COAN
GO

-- The cost account or cost item of that chart and code as the company sees it. A NULL code gives the whole chart and
-- @TIPOLOGIA keeps only the accounts whose kind is in the mask (NULL: no restriction), for lookup lists.
CREATE FUNCTION FNPC03_ANAGPDC_COAN
(
    @PDC DECIMAL(3),
    @CONTO NCHAR(15),
    @DITTA DECIMAL(5),
    @TIPOLOGIA INT
)
RETURNS TABLE
AS
RETURN
(
    SELECT
        PC03_CODPDC_PC01
        , PC03_CONTO
        , PC03_DESCR
        , PC03_INDTIPOCONTO
        , PC03_FLGANALITICO
    FROM
        PC03_ANAGPDC
    WHERE
        PC03_CODPDC_PC01 = @PDC
        AND (@CONTO IS NULL OR PC03_CONTO = @CONTO)
        AND (PC03_DITTA_CG18 = 0 OR PC03_DITTA_CG18 = @DITTA)
        AND (@TIPOLOGIA IS NULL OR (PC03_INDTIPOCONTO & @TIPOLOGIA) <> 0)
)
GO

IF OBJECT_ID('SPCI_INTERMEDIFIGLI') IS NOT NULL DROP PROCEDURE SPCI_INTERMEDIFIGLI
GO

-- Grouping children of an account in the session's current selection: those of the nature, and those with an analytic
-- account of the nature below them, so that a search always finds its path. ATTIVO is 1 when the child has analytic
-- accounts of the nature below it and all of them are activated. The selection holds one chart only.
-- INDICE numbers the chart in the order of its codes and codes are digits, so the accounts below a child are those from
-- its own number to that of the last account whose code begins with its header: one index of the selection serves the
-- tests at every level.
CREATE PROCEDURE SPCI_INTERMEDIFIGLI
    @LIVELLO_PARENT SMALLINT,
    @GRUPPO DECIMAL(2),
    @PARENT NCHAR(10),
    @NATURA DECIMAL(1)
AS
BEGIN
    SELECT
        FIGLIO.CONTO
        , FIGLIO.CONTOF
        , FIGLIO.DESCRIZIONE
        , FIGLIO.ISANALITICO
        , CAST(
            CASE
                WHEN FIGLIO.PRIMOSPENTO <= FIGLIO.ULTIMO THEN 0
                WHEN FIGLIO.PRIMOATTIVO <= FIGLIO.ULTIMO THEN 1
                ELSE 0
            END AS BIT) AS ATTIVO
        , FIGLIO.CORRELATO
        , FIGLIO.NRLIVELLO
    FROM
        (
            SELECT
                INDICE
                , CONTO
                , CONTOF
                , DESCRIZIONE
                , CG24_INDTIPOCONTO
                , NRLIVELLO
                , ISANALITICO
                , CORRELATO
                , LEFT(CODEHEADER + '9999999999', 10) AS ULTIMO
                , (
                    SELECT TOP 1 SUB.CONTO
                    FROM #CG24_TABPDC_SELECTED AS SUB
                    WHERE SUB.CG24_INDTIPOCONTO = @NATURA
                        AND SUB.ISANALITICO = 1
                        AND SUB.ATTIVO = 0
                        AND SUB.LIVELLO1 = #CG24_TABPDC_SELECTED.LIVELLO1
                        AND SUB.INDICE > #CG24_TABPDC_SELECTED.INDICE
                    ORDER BY SUB.INDICE ASC
                ) AS PRIMOSPENTO
                , (
                    SELECT TOP 1 SUB.CONTO
                    FROM #CG24_TABPDC_SELECTED AS SUB
                    WHERE SUB.CG24_INDTIPOCONTO = @NATURA
                        AND SUB.ISANALITICO = 1
                        AND SUB.ATTIVO = 1
                        AND SUB.LIVELLO1 = #CG24_TABPDC_SELECTED.LIVELLO1
                        AND SUB.INDICE > #CG24_TABPDC_SELECTED.INDICE
                    ORDER BY SUB.INDICE ASC
                ) AS PRIMOATTIVO
            FROM
                #CG24_TABPDC_SELECTED
            WHERE
                @LIVELLO_PARENT BETWEEN 1 AND 3
                AND GRUPPO = @GRUPPO
                AND PARENT = @PARENT
                AND ISANALITICO = 0
        ) AS FIGLIO
    WHERE
        FIGLIO.CG24_INDTIPOCONTO = @NATURA
        OR FIGLIO.PRIMOSPENTO <= FIGLIO.ULTIMO
        OR FIGLIO.PRIMOATTIVO <= FIGLIO.ULTIMO
    ORDER BY
        FIGLIO.INDICE ASC
END
GO

IF OBJECT_ID('SPCI_VELDRANACT') IS NOT NULL DROP PROCEDURE SPCI_VELDRANACT
GO

-- Activates (@ON = 1) or deactivates the analytic accounts of the nature that lie under @CONTO, or @CONTO itself when
-- it is analytic. @CORRELATI: 2 every account, 1 only those with correlations, 0 only those without.
-- Accounts already in the wanted state are left as they are.
-- Account codes are digits, so the accounts under a header are the range from the header filled with zeros to the
-- header filled with nines, which the key serves.
CREATE PROCEDURE SPCI_VELDRANACT
    @ON BIT,
    @DITTA DECIMAL(5),
    @GRUPPO DECIMAL(2),
    @CONTO NCHAR(10),
    @NATURA DECIMAL(1),
    @CORRELATI SMALLINT
AS
BEGIN
    DECLARE @LIVELLI SMALLINT
    DECLARE @HEADER NVARCHAR(10)
    DECLARE @PRIMO NCHAR(10)
    DECLARE @ULTIMO NCHAR(10)

    SET @LIVELLI = (SELECT CG10_NUMLIVELLI FROM CG10_DESPDC WHERE CG10_GRUPPO = @GRUPPO)
    SET @HEADER = DBO.FNCI_COGE_GETCODEHEADER(@LIVELLI, @CONTO)
    SET @PRIMO = LEFT(@HEADER + '0000000000', 10)
    SET @ULTIMO = LEFT(@HEADER + '9999999999', 10)

    IF @ON = 1
        INSERT INTO CI35_CONTIATTIVI
        (
            CI35_DITTA_CG18
            , CI35_GRUPPO_CG10
            , CI35_CONTO_CG24
        )
        SELECT
            @DITTA
            , CG24_GRUPPO_CG10
            , CG24_CONTO
        FROM
            CG24_TABPDC
        WHERE
            CG24_GRUPPO_CG10 = @GRUPPO
            AND CG24_CONTO >= @PRIMO
            AND CG24_CONTO <= @ULTIMO
            AND CG24_INDTIPOCONTO = @NATURA
            AND (
                (@LIVELLI = 2 AND SUBSTRING(CG24_CONTO, 6, 5) <> '00000')
                OR (@LIVELLI IN (3, 4) AND SUBSTRING(CG24_CONTO, 7, 4) <> '0000')
                OR (@LIVELLI = 5 AND SUBSTRING(CG24_CONTO, 9, 2) <> '00')
            )
            AND (
                @CORRELATI = 2
                OR @CORRELATI = CASE
                    WHEN EXISTS (
                        SELECT 1
                        FROM CI15_CORRCONTICOGE
                        WHERE CI15_DITTA_CG18 = @DITTA
                            AND CI15_CODPDC_CG10 = CG24_GRUPPO_CG10
                            AND CI15_CONTO_CG24 = CG24_CONTO
                    ) THEN 1
                    ELSE 0
                END
            )
            AND NOT EXISTS (
                SELECT 1
                FROM CI35_CONTIATTIVI
                WHERE CI35_DITTA_CG18 = @DITTA
                    AND CI35_GRUPPO_CG10 = CG24_GRUPPO_CG10
                    AND CI35_CONTO_CG24 = CG24_CONTO
            )
    ELSE IF @ON = 0
        DELETE FROM CI35_CONTIATTIVI
        WHERE
            CI35_DITTA_CG18 = @DITTA
            AND CI35_GRUPPO_CG10 = @GRUPPO
            AND CI35_CONTO_CG24 >= @PRIMO
            AND CI35_CONTO_CG24 <= @ULTIMO
            AND (
                (@LIVELLI = 2 AND SUBSTRING(CI35_CONTO_CG24, 6, 5) <> '00000')
                OR (@LIVELLI IN (3, 4) AND SUBSTRING(CI35_CONTO_CG24, 7, 4) <> '0000')
                OR (@LIVELLI = 5 AND SUBSTRING(CI35_CONTO_CG24, 9, 2) <> '00')
            )
            AND EXISTS (
                SELECT 1
                FROM CG24_TABPDC
                WHERE CG24_GRUPPO_CG10 = CI35_GRUPPO_CG10
                    AND CG24_CONTO = CI35_CONTO_CG24
                    AND CG24_INDTIPOCONTO = @NATURA
            )
            AND (
                @CORRELATI = 2
                OR @CORRELATI = CASE
                    WHEN EXISTS (
                        SELECT 1
                        FROM CI15_CORRCONTICOGE
                        WHERE CI15_DITTA_CG18 = @DITTA
                            AND CI15_CODPDC_CG10 = CI35_GRUPPO_CG10
                            AND CI15_CONTO_CG24 = CI35_CONTO_CG24
                    ) THEN 1
                    ELSE 0
                END
            )
END
GO
