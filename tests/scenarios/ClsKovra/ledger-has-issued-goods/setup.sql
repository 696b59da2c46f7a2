INSERT INTO IA_enSubsidiary (iYear, iMonth) VALUES (2023, 1)
