// Imports one request:  Import CLASS REQUEST.xml LOGIN.xml
// Compile with  csc /platform:x64 Import.cs  (or x86, as the Kovra.dll that is registered). It needs C# 4 or later.
using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using System.Runtime.InteropServices;
using System.Xml.Linq;
using System.Xml.XPath;

/// <summary>What came of one row.</summary>
sealed class Outcome
{
    /// <summary>Counted from 1; null where the result does not tell.</summary>
    public int? Row;
    public string Key;
    /// <summary>0 for an accepted row, 101 or 999 for a refused one.</summary>
    public int Code;
    public string Message;
}

/// <summary>The request was refused as a whole.</summary>
sealed class RefusedRequest : Exception
{
    public readonly string Code;

    public RefusedRequest(string code, string message) : base(message)
    {
        Code = code;
    }
}

static class KovraResult
{
    /// <summary>The outcomes that stand in a result, one a row; none after "EMPTY".</summary>
    /// <exception cref="RefusedRequest">The result is an error result.</exception>
    public static List<Outcome> Outcomes(string request, string result)
    {
        var outcomes = new List<Outcome>();
        if (result.Length == 0)
            return outcomes;
        XElement root = XElement.Parse(result);
        if (root.Name == "error")
            throw new RefusedRequest((string)root.Attribute("code"), (string)root.Attribute("dsc"));

        int rows = RowCount(XElement.Parse(request));
        List<Outcome> items = root.Elements("item").Select(ReadItem).ToList();
        // A setting that is refused while it is written has two outcomes, the refusal and then "ok": the refusal counts.
        // An error that stopped the loop leaves rows without an outcome; then every pair that looks like it is one.
        bool stopped = items.Count > 0 && items[items.Count - 1].Code == 999;
        int seconds = stopped ? items.Count : items.Count - rows;
        string refusedKey = null;
        foreach (Outcome item in items)
        {
            if (seconds > 0 && item.Code == 0 && item.Key == refusedKey)
            {
                --seconds;
                refusedKey = null;
                continue;
            }
            refusedKey = item.Code == 101 ? item.Key : null;
            outcomes.Add(item);
            item.Row = outcomes.Count;
        }
        if (outcomes.Count > rows)
            outcomes.ForEach(outcome => outcome.Row = null);
        return outcomes;
    }

    static Outcome ReadItem(XElement item)
    {
        return new Outcome { Key = (string)item.Attribute("key"), Code = (int)item.Attribute("code"),
                             Message = (string)item.Attribute("dsc") };
    }

    /// <summary>How many rows a request has: the elements that its roottag names.</summary>
    static int RowCount(XElement request)
    {
        string tag = (string)request.Attribute("roottag") ?? "";
        return tag.Length == 0 ? 0 : request.XPathSelectElements(tag).Count();
    }
}

static class Import
{
    // Kovra's classes live in a single-threaded apartment; without STAThread every call would cross apartments.
    [STAThread]
    static int Main(string[] arguments)
    {
        if (arguments.Length != 3)
        {
            Console.Error.WriteLine("Import CLASS REQUEST.xml LOGIN.xml");
            return 2;
        }
        string request = XDocument.Load(arguments[1]).ToString(SaveOptions.DisableFormatting);
        // Inside the ERP take the login object that it gives you. Elsewhere the reference host's stands in for it.
        dynamic login = Activator.CreateInstance(Type.GetTypeFromProgID("KovraHost.Login", true));
        login.LoadXML(XDocument.Load(arguments[2]).ToString(SaveOptions.DisableFormatting));

        // One instance serves one request, and holds its connection until it is given back.
        dynamic importer = Activator.CreateInstance(Type.GetTypeFromProgID("Kovra." + arguments[0], true));
        try
        {
            string result = importer.Transact(request, login);
            List<Outcome> outcomes = KovraResult.Outcomes(request, result);
            foreach (Outcome outcome in outcomes)
                Console.WriteLine("{0}\t{1}\t{2}\t{3}", outcome.Row, outcome.Code, outcome.Key, outcome.Message);
            return outcomes.All(outcome => outcome.Code == 0) ? 0 : 1;
        }
        catch (RefusedRequest refused)
        {
            Console.Error.WriteLine("{0}: {1}", refused.Code, refused.Message);
            return 3;
        }
        finally
        {
            Marshal.FinalReleaseComObject(importer);
        }
    }
}
