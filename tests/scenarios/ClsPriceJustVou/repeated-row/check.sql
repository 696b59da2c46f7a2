SELECT name FROM sysobjects WHERE type = N'U' AND name LIKE N'IA[_]tmpPriceJDATA%' ORDER BY name
