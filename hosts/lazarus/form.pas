{ A Lazarus form with a 3D view and a 2D view, both by name, and their events. A click tells what it hit. }
program form;

{$mode objfpc}{$H+}
{$apptype console}

uses
  Interfaces, Classes, SysUtils, Variants, ActiveX, ComObj, Forms, Controls, ActiveXContainer;

const
  Events3D: TGUID = '{7763C6FE-1FEA-42F2-8E81-6E2E4D05B5C7}';
  Events2D: TGUID = '{101117C5-DC6E-4583-B91C-0610ED767687}';
  MouseSelection = 3; { the same number in both }
  Pick = -1;
  Shaded = 0;

type
  TEventHandler = procedure(Event: LongInt; const LastArgument: OleVariant) of object;

  { Takes the events of a view. }
  TEventSink = class(TInterfacedObject, IDispatch)
  private
    FHandler: TEventHandler;
  public
    constructor Create(Handler: TEventHandler);
    function GetTypeInfoCount(out Count: LongInt): HResult; stdcall;
    function GetTypeInfo(Index, LocaleID: LongInt; out TypeInfo): HResult; stdcall;
    function GetIDsOfNames(const IID: TGUID; Names: Pointer; NameCount, LocaleID: LongInt; DispIDs: Pointer): HResult; stdcall;
    function Invoke(DispID: LongInt; const IID: TGUID; LocaleID: LongInt; Flags: Word; var Params;
      VarResult, ExcepInfo, ArgErr: Pointer): HResult; stdcall;
  end;

  TMainForm = class(TForm)
  private
    FView3D, FView2D: TActiveXContainer;
    FConnection3D, FConnection2D: DWord;
    FMoves: Integer;
    function NewView(const ProgId: String; LeftEdge: Integer): TActiveXContainer;
    procedure HandleEvent(Event: LongInt; const LastArgument: OleVariant);
    procedure FormShown(Sender: TObject);
    procedure FormClosed(Sender: TObject; var CloseAction: TCloseAction);
  public
    constructor Create(TheOwner: TComponent); override;
  end;

constructor TEventSink.Create(Handler: TEventHandler);
begin
  FHandler := Handler;
end;

function TEventSink.GetTypeInfoCount(out Count: LongInt): HResult; stdcall;
begin
  Count := 0;
  Result := S_OK;
end;

function TEventSink.GetTypeInfo(Index, LocaleID: LongInt; out TypeInfo): HResult; stdcall;
begin
  Pointer(TypeInfo) := nil;
  Result := E_NOTIMPL;
end;

function TEventSink.GetIDsOfNames(const IID: TGUID; Names: Pointer; NameCount, LocaleID: LongInt; DispIDs: Pointer): HResult; stdcall;
begin
  Result := E_NOTIMPL;
end;

{ The arguments come last first. }
function TEventSink.Invoke(DispID: LongInt; const IID: TGUID; LocaleID: LongInt; Flags: Word; var Params;
  VarResult, ExcepInfo, ArgErr: Pointer): HResult; stdcall;
var
  Arguments: TDispParams absolute Params;
begin
  if Arguments.cArgs > 0 then
    FHandler(DispID, POleVariant(@Arguments.rgvarg^[0])^);
  Result := S_OK;
end;

{ A text that answers to a name when it is picked. }
procedure AddText(View: OleVariant; const Words: WideString; x, y: Double; Name: Integer);
var
  Text: OleVariant;
begin
  Text := CreateOleObject('ZYNVue.ZYNGLTexte');
  Text.Texte := Words;
  Text.HauteurPixels := 60;
  Text.setPosition(x, y, 0.0, 9);
  Text.NomSelection := Name;
  View.Add(Text, Shaded);
  View.AddSelection(Text);
end;

constructor TMainForm.Create(TheOwner: TComponent);
begin
  inherited CreateNew(TheOwner);
  Caption := 'Lazarus';
  SetBounds(0, 0, 820, 400);
  OnShow := @FormShown;
  OnClose := @FormClosed;
  FView3D := NewView('ZYNVue.ZYNVue3D', 0);
  FView2D := NewView('ZYNVue.ZYNVue2D', 410);
end;

function TMainForm.NewView(const ProgId: String; LeftEdge: Integer): TActiveXContainer;
begin
  Result := TActiveXContainer.Create(Self);
  Result.SetBounds(LeftEdge, 0, 400, 360);
  Result.OleClassName := ProgId;
end;

{ The container makes the view when it becomes active, in the window that it has by now. }
procedure TMainForm.FormShown(Sender: TObject);
begin
  FView3D.Active := True;
  AddText(FView3D.vObject, 'one', 0, -1, 1);
  AddText(FView3D.vObject, 'two', 0, 1, 2);
  FView3D.vObject.MouseMode := Pick;
  FView3D.vObject.initView(1.0);
  InterfaceConnect(FView3D.ComServer, Events3D, TEventSink.Create(@HandleEvent), FConnection3D);

  FView2D.Active := True;
  AddText(FView2D.vObject, 'three', 5, 5, 3);
  FView2D.vObject.Mode := Pick;
  FView2D.vObject.ViewRect(0.0, 10.0, 0.0, 10.0);
  InterfaceConnect(FView2D.ComServer, Events2D, TEventSink.Create(@HandleEvent), FConnection2D);
end;

procedure TMainForm.HandleEvent(Event: LongInt; const LastArgument: OleVariant);
begin
  if Event <> MouseSelection then
    Inc(FMoves)
  else if not VarIsArray(LastArgument) then
    Caption := 'Picked: nothing'
  else if VarArrayHighBound(LastArgument, 1) < 0 then
    Caption := 'Picked: what has no name'
  else
    Caption := 'Picked: ' + VarToStr(LastArgument[0]);
end;

{ Before the windows of the containers go. }
procedure TMainForm.FormClosed(Sender: TObject; var CloseAction: TCloseAction);
begin
  InterfaceDisconnect(FView3D.ComServer, Events3D, FConnection3D);
  InterfaceDisconnect(FView2D.ComServer, Events2D, FConnection2D);
  FView3D.Active := False;
  FView2D.Active := False;
  if FMoves > 0 then
    WriteLn('the mouse was seen');
end;

var
  MainForm: TMainForm;

begin
  Application.Initialize;
  Application.CreateForm(TMainForm, MainForm);
  Application.Run;
  WriteLn('done');
end.
