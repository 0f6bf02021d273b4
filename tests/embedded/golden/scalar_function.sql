-- The body of a scalar function stands where it is called; the level decides its CASE.
-- ?: NCHAR(10)
SELECT DBO.TESTATA(2, ?)
----
SELECT substr(?1, 1, 2)
