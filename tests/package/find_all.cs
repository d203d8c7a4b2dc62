// Looks up every function that TrevikA.cs declares; throws if one is missing.
static class FindAll
{
    static void Main()
    {
        System.Runtime.InteropServices.Marshal.PrelinkAll(typeof(Trevik.Api));
    }
}
