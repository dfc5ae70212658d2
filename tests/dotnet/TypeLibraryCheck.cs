// Compares the interfaces of ZYNVue.Interop with the type libraries that are registered: every member must be in the
// slot of the vtable where its library has it, under its number, with its arguments passed as the library says. One that
// is not crashes the programs that call it. Then makes an object of every class.
using System;
using System.Collections.Generic;
using System.Linq;
using System.Reflection;
using System.Runtime.InteropServices;
using System.Runtime.InteropServices.ComTypes;

/// The members of a type of a library, a line each.
internal static class LibrarySide {
  [DllImport("oleaut32.dll", PreserveSig = false)]
  private static extern void LoadRegTypeLib(ref Guid id, short major, short minor, int language, out ITypeLib library);

  public static IEnumerable<ITypeInfo> Types(string libraryId) {
    Guid id = new Guid(libraryId);
    LoadRegTypeLib(ref id, 1, 0, 0, out ITypeLib library);
    for (int i = 0; i < library.GetTypeInfoCount(); ++i) {
      library.GetTypeInfo(i, out ITypeInfo type);
      yield return type;
    }
  }

  public static string Name(ITypeInfo type, int member = -1) {
    type.GetDocumentation(member, out string name, out _, out _, out _);
    return name;
  }

  public static TYPEATTR Attributes(ITypeInfo type) {
    type.GetTypeAttr(out IntPtr attributes);
    try {
      return Marshal.PtrToStructure<TYPEATTR>(attributes);
    } finally {
      type.ReleaseTypeAttr(attributes);
    }
  }

  public static bool IsDual(ITypeInfo type) => (Attributes(type).wTypeFlags & TYPEFLAGS.TYPEFLAG_FDUAL) != 0;

  public static List<string> Members(ITypeInfo type) {
    ITypeInfo form = type;
    if (IsDual(type) && Attributes(type).typekind == TYPEKIND.TKIND_DISPATCH) {
      type.GetRefTypeOfImplType(-1, out int reference);
      type.GetRefTypeInfo(reference, out form);
    }
    bool hasSlots = Attributes(form).typekind == TYPEKIND.TKIND_INTERFACE;
    var lines = hasSlots ? MembersOfBase(form) : new List<string>();
    for (int i = 0; i < Attributes(form).cFuncs; ++i) {
      form.GetFuncDesc(i, out IntPtr function);
      lines.Add(Line(form, Marshal.PtrToStructure<FUNCDESC>(function), hasSlots, IsDual(type) || !hasSlots));
      form.ReleaseFuncDesc(function);
    }
    return lines;
  }

  private static List<string> MembersOfBase(ITypeInfo form) {
    form.GetRefTypeOfImplType(0, out int reference);
    form.GetRefTypeInfo(reference, out ITypeInfo type);
    return Name(type) == "IUnknown" || Name(type) == "IDispatch" ? new List<string>() : Members(type);
  }

  private static string Line(ITypeInfo type, FUNCDESC function, bool hasSlot, bool hasNumber) {
    var arguments = new List<string>();
    for (int i = 0; i < function.cParams; ++i) {
      var element = Marshal.PtrToStructure<ELEMDESC>(function.lprgelemdescParam + i * Marshal.SizeOf<ELEMDESC>());
      const PARAMFLAG directions = PARAMFLAG.PARAMFLAG_FIN | PARAMFLAG.PARAMFLAG_FOUT;
      bool isOut = (element.desc.paramdesc.wParamFlags & directions) == PARAMFLAG.PARAMFLAG_FOUT;
      arguments.Add((isOut ? "out " : "") + TypeText(type, element.tdesc));
    }
    string kind = function.invkind == INVOKEKIND.INVOKE_FUNC ? "method"
        : function.invkind == INVOKEKIND.INVOKE_PROPERTYGET ? "get" : "set";
    string result = ((VarEnum)function.elemdescFunc.tdesc.vt).ToString();
    return (hasSlot ? "slot " + function.oVft / IntPtr.Size + " " : "") + (hasNumber ? "id " + function.memid + " " : "") +
           kind + " " + Name(type, function.memid) + "(" + string.Join(", ", arguments) + ") " + result;
  }

  private static string TypeText(ITypeInfo type, TYPEDESC description) {
    var kind = (VarEnum)description.vt;
    if (kind == VarEnum.VT_INT) return "VT_I4";
    if (kind != VarEnum.VT_PTR && kind != VarEnum.VT_USERDEFINED) return kind.ToString();
    if (kind == VarEnum.VT_USERDEFINED) {
      return Attributes(Referred(type, description)).typekind == TYPEKIND.TKIND_ENUM ? "VT_I4" : "?";
    }
    var target = Marshal.PtrToStructure<TYPEDESC>(description.lpValue);
    // The one interface that members name; it is derived from IDispatch.
    bool isObject = (VarEnum)target.vt == VarEnum.VT_USERDEFINED && Name(Referred(type, target)) == "IPictureDisp";
    return isObject ? "VT_DISPATCH" : TypeText(type, target) + "*";
  }

  private static ITypeInfo Referred(ITypeInfo type, TYPEDESC description) {
    type.GetRefTypeInfo(unchecked((int)description.lpValue.ToInt64()), out ITypeInfo referred);
    return referred;
  }
}

/// The members of an interface of the assembly, a line each in the same form. Slots follow the order in which the compiler
/// has written the methods, behind those of IUnknown (3) or IDispatch (7).
internal static class AssemblySide {
  public static List<string> Members(Type type) {
    ComInterfaceType kind = type.GetCustomAttribute<InterfaceTypeAttribute>().Value;
    int first = kind == ComInterfaceType.InterfaceIsIUnknown ? 3 : 7;
    return type.GetMethods().OrderBy(method => method.MetadataToken)
        .Select((method, i) => Line(method, kind, first + i)).ToList();
  }

  private static string Line(MethodInfo method, ComInterfaceType kind, int slot) {
    PropertyInfo property = method.DeclaringType.GetProperties().FirstOrDefault(p => p.GetAccessors().Contains(method));
    MemberInfo member = (MemberInfo)property ?? method;
    string accessor = property == null ? "method" : method == property.GetMethod ? "get" : "set";
    string name = member.Name;
    if (property == null && (name.StartsWith("get_") || name.StartsWith("put_") || name.StartsWith("putref_"))) {
      accessor = name.StartsWith("get_") ? "get" : "set";
      name = name.Substring(name.IndexOf('_') + 1);
    }
    IEnumerable<string> arguments = method.GetParameters().Select(ArgumentText);
    if (method.ReturnType != typeof(void)) arguments = arguments.Append("out " + TypeText(method.ReturnParameter) + "*");
    bool isEvent = kind == ComInterfaceType.InterfaceIsIDispatch;
    bool answersResult = (method.MethodImplementationFlags & MethodImplAttributes.PreserveSig) == 0;
    return (isEvent ? "" : "slot " + slot + " ") +
           (kind == ComInterfaceType.InterfaceIsIUnknown ? ""
                : "id " + member.GetCustomAttribute<DispIdAttribute>().Value + " ") +
           accessor + " " + name + "(" + string.Join(", ", arguments) + ") " +
           (isEvent ? "VT_VOID" : answersResult ? "VT_HRESULT" : "VT_VOID");
  }

  private static string ArgumentText(ParameterInfo argument) =>
      (argument.IsOut ? "out " : "") + TypeText(argument) + (argument.ParameterType.IsByRef ? "*" : "");

  private static string TypeText(ParameterInfo argument) {
    Type type = argument.ParameterType.IsByRef ? argument.ParameterType.GetElementType() : argument.ParameterType;
    UnmanagedType? marshalling = argument.GetCustomAttribute<MarshalAsAttribute>()?.Value;
    if (type.IsEnum) type = Enum.GetUnderlyingType(type);
    if (marshalling == null) {
      return type == typeof(short) ? "VT_I2" : type == typeof(int) ? "VT_I4" : type == typeof(float) ? "VT_R4"
          : type == typeof(double) ? "VT_R8" : "?" + type;
    }
    if (type == typeof(bool) && marshalling == UnmanagedType.VariantBool) return "VT_BOOL";
    if (type == typeof(string) && marshalling == UnmanagedType.BStr) return "VT_BSTR";
    if (type == typeof(object) && marshalling == UnmanagedType.Struct) return "VT_VARIANT";
    if (type == typeof(object) && marshalling == UnmanagedType.IDispatch) return "VT_DISPATCH";
    if (type == typeof(object) && marshalling == UnmanagedType.IUnknown) return "VT_UNKNOWN";
    return "?" + type + " as " + marshalling;
  }
}

internal sealed class TypeLibraryCheck {
  // What the libraries refer to; no interfaces of theirs.
  private static readonly string[] Others = { "IUnknown", "IDispatch", "IPicture", "IPictureDisp" };

  private static readonly Assembly Interop = typeof(ZYNVue.Interop.Components).Assembly;

  private readonly Action<string> fail_;
  private int interfaces_;
  private int members_;
  private int classes_;

  public TypeLibraryCheck(Action<string> fail) => fail_ = fail;

  public void Run() {
    foreach (string library in new[] { "CD0942D5-F9A2-4059-91F4-DE4DDEF9EE0D", "F89929EF-7DCF-454B-816A-6344C53FD50D" }) {
      foreach (ITypeInfo type in LibrarySide.Types(library)) Check(type);
    }
    int declared = Interop.GetExportedTypes().Count(type => type.IsInterface);
    if (declared != interfaces_) fail_(declared + " interfaces are declared");
    Console.WriteLine(interfaces_ + " interfaces with " + members_ + " members, " + classes_ + " classes");
  }

  private void Check(ITypeInfo type) {
    string name = LibrarySide.Name(type);
    TYPEKIND kind = LibrarySide.Attributes(type).typekind;
    if (kind == TYPEKIND.TKIND_COCLASS) {
      CheckClass(name, LibrarySide.Attributes(type).guid);
    } else if (kind != TYPEKIND.TKIND_ENUM && !Others.Contains(name)) {
      CheckInterface(name, type);
    }
  }

  private void CheckInterface(string name, ITypeInfo type) {
    ++interfaces_;
    Type declared = Interop.GetType("ZYNVue.Interop." + name);
    if (declared == null || declared.GUID != LibrarySide.Attributes(type).guid) {
      fail_(name);
      return;
    }
    List<string> wanted = LibrarySide.Members(type);
    List<string> found = AssemblySide.Members(declared);
    members_ += wanted.Count;
    if (wanted.Count != found.Count) fail_(name + " has " + found.Count + " members");
    foreach (var (want, have) in wanted.Zip(found, (want, have) => (want, have))) {
      if (want != have) fail_(name + ": " + want + ", not " + have);
    }
  }

  private void CheckClass(string name, Guid id) {
    ++classes_;
    Type declared = Interop.GetType("ZYNVue.Interop." + name);
    var progId = (string)declared?.GetField("ProgId")?.GetValue(null);
    if (progId == null || Type.GetTypeFromProgID(progId)?.GUID != id ||
        !id.Equals(declared.GetField("ClassId").GetValue(null)) ||
        declared.GetMethod("Create").Invoke(null, null) == null) {
      fail_(name);
    }
  }
}
