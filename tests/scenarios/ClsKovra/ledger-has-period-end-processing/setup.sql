INSERT INTO ia_summary (iYear, iMonth, iPeriod) VALUES (2023, 1, 1)
