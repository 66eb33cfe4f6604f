#include "core/host/HostDispatch.h"

#include <cstdint>

namespace trellin {
namespace {

float Twips(const Variant& v) { return static_cast<float>(v.ToDouble()); }

class ControlDispatch : public TableDispatch<ControlDispatch> {
 public:
  explicit ControlDispatch(Control& c) : c_(c) {}
  [[nodiscard]] std::string TypeName() const override { return "Control " + c_.Name(); }

  static const MemberTable<ControlDispatch>& Table() {
    static const MemberTable<ControlDispatch> table = [] {
      MemberTable<ControlDispatch> t;
      t.Property("Name", [](ControlDispatch& d) { return Variant(d.c_.Name()); });
      t.Property(
          "Visible", [](ControlDispatch& d) { return Variant(d.c_.Visible()); },
          [](ControlDispatch& d, const Variant& v) { d.c_.SetVisible(v.ToBool()); });
      t.Property(
          "Caption", [](ControlDispatch& d) { return Variant(d.c_.Caption()); },
          [](ControlDispatch& d, const Variant& v) { d.c_.SetCaption(v.Text()); });
      t.Property(
          "Text", [](ControlDispatch& d) { return Variant(d.c_.Text()); },
          [](ControlDispatch& d, const Variant& v) { d.c_.SetText(v.Text()); });
      for (const char* name : {"Value", "DataValue"}) {
        t.Property(
            name, [](ControlDispatch& d) { return d.c_.DataValue(); },
            [](ControlDispatch& d, const Variant& v) { d.c_.SetDataValue(v); });
      }
      t.Property(
          "DataField", [](ControlDispatch& d) { return Variant(d.c_.DataField()); },
          [](ControlDispatch& d, const Variant& v) { d.c_.SetDataField(v.Text()); });
      t.Property(
          "OutputFormat", [](ControlDispatch& d) { return Variant(d.c_.OutputFormat()); },
          [](ControlDispatch& d, const Variant& v) { d.c_.SetOutputFormat(v.Text()); });
      t.Property(
          "Tag", [](ControlDispatch& d) { return Variant(d.c_.Tag()); },
          [](ControlDispatch& d, const Variant& v) { d.c_.SetTag(v.Text()); });
      t.Property(
          "Left", [](ControlDispatch& d) { return Variant(double(d.c_.Left())); },
          [](ControlDispatch& d, const Variant& v) { d.c_.SetLeft(Twips(v)); });
      t.Property(
          "Top", [](ControlDispatch& d) { return Variant(double(d.c_.Top())); },
          [](ControlDispatch& d, const Variant& v) { d.c_.SetTop(Twips(v)); });
      t.Property(
          "Width", [](ControlDispatch& d) { return Variant(double(d.c_.Width())); },
          [](ControlDispatch& d, const Variant& v) { d.c_.SetWidth(Twips(v)); });
      t.Property(
          "Height", [](ControlDispatch& d) { return Variant(double(d.c_.Height())); },
          [](ControlDispatch& d, const Variant& v) { d.c_.SetHeight(Twips(v)); });
      t.Property(
          "ForeColor",
          [](ControlDispatch& d) { return Variant(static_cast<std::int64_t>(d.c_.ForeColor())); },
          [](ControlDispatch& d, const Variant& v) {
            d.c_.SetForeColor(static_cast<std::uint32_t>(v.ToLong()));
          });
      t.Property(
          "Alignment",
          [](ControlDispatch& d) { return Variant(static_cast<int>(d.c_.Alignment())); },
          [](ControlDispatch& d, const Variant& v) {
            std::int64_t a = v.ToLong();
            if (a < 0 || a > 2) throw TypeMismatch("Alignment is 0, 1 or 2");
            d.c_.SetAlignment(static_cast<TextAlignment>(a));
          });
      t.Property(
          "CanGrow", [](ControlDispatch& d) { return Variant(d.c_.CanGrow()); },
          [](ControlDispatch& d, const Variant& v) { d.c_.SetCanGrow(v.ToBool()); });
      t.Property(
          "CanShrink", [](ControlDispatch& d) { return Variant(d.c_.CanShrink()); },
          [](ControlDispatch& d, const Variant& v) { d.c_.SetCanShrink(v.ToBool()); });
      t.Property(
          "object",
          [](ControlDispatch& d) {
            return d.c_.object()
                       ? Variant(std::static_pointer_cast<Object>(DispatchReport(d.c_.object())))
                       : Variant();
          },
          [](ControlDispatch& d, const Variant& v) {
            if (d.c_.Class() != ControlClass::Subreport) {
              throw NoSuchItem(d.TypeName() + " is no sub-report");
            }
            d.c_.SetObject(v.IsEmpty() ? nullptr : ReportOf(v));
          });
      return t;
    }();
    return table;
  }

 private:
  Control& c_;
};

class SectionDispatch : public TableDispatch<SectionDispatch> {
 public:
  explicit SectionDispatch(Section& s) : s_(s) {}
  [[nodiscard]] std::string TypeName() const override { return "Section " + s_.Name(); }

  static const MemberTable<SectionDispatch>& Table() {
    static const MemberTable<SectionDispatch> table = [] {
      MemberTable<SectionDispatch> t;
      t.Property("Name", [](SectionDispatch& d) { return Variant(d.s_.Name()); });
      t.Property(
          "Visible", [](SectionDispatch& d) { return Variant(d.s_.Visible()); },
          [](SectionDispatch& d, const Variant& v) { d.s_.SetVisible(v.ToBool()); });
      t.Property(
          "Height", [](SectionDispatch& d) { return Variant(double(d.s_.Height())); },
          [](SectionDispatch& d, const Variant& v) { d.s_.SetHeight(Twips(v)); });
      t.Property(
          "BackStyle", [](SectionDispatch& d) { return Variant(d.s_.BackStyle()); },
          [](SectionDispatch& d, const Variant& v) {
            d.s_.SetBackStyle(static_cast<int>(v.ToLong()));
          });
      t.Property(
          "BackColor",
          [](SectionDispatch& d) { return Variant(static_cast<std::int64_t>(d.s_.BackColor())); },
          [](SectionDispatch& d, const Variant& v) {
            d.s_.SetBackColor(static_cast<std::uint32_t>(v.ToLong()));
          });
      t.Property(
          "CanGrow", [](SectionDispatch& d) { return Variant(d.s_.CanGrow()); },
          [](SectionDispatch& d, const Variant& v) { d.s_.SetCanGrow(v.ToBool()); });
      t.Property(
          "CanShrink", [](SectionDispatch& d) { return Variant(d.s_.CanShrink()); },
          [](SectionDispatch& d, const Variant& v) { d.s_.SetCanShrink(v.ToBool()); });
      t.Method("Controls", [](SectionDispatch& d, const std::vector<Variant>& a) {
        const Variant& key = Arg(a, 0);
        Control& c = key.IsNumber() ? d.s_.Controls().Item(static_cast<std::size_t>(key.ToLong()))
                                    : d.s_.Controls().Item(key.Text());
        return Variant(std::static_pointer_cast<Object>(std::make_shared<ControlDispatch>(c)));
      });
      return t;
    }();
    return table;
  }
  // Its controls stay the section's for the whole run.
  [[nodiscard]] bool Lasting(std::string_view name) const override {
    return Table().Find(name) == nullptr && HasOther(name);
  }

 protected:
  [[nodiscard]] bool HasOther(std::string_view name) const override {
    return s_.Controls().Find(name) != nullptr;
  }
  [[nodiscard]] Variant GetOther(std::string_view name) override {
    return std::static_pointer_cast<Object>(std::make_shared<ControlDispatch>(s_.Field(name)));
  }

 private:
  Section& s_;
};

class FieldsDispatch : public TableDispatch<FieldsDispatch> {
 public:
  explicit FieldsDispatch(Fields& f) : f_(f) {}
  [[nodiscard]] std::string TypeName() const override { return "Fields"; }

  static const MemberTable<FieldsDispatch>& Table() {
    static const MemberTable<FieldsDispatch> table = [] {
      MemberTable<FieldsDispatch> t;
      t.Property("Count", [](FieldsDispatch& d) {
        return Variant(static_cast<std::int64_t>(d.f_.Count()));
      });
      t.Method("Item", [](FieldsDispatch& d, const std::vector<Variant>& a) {
        const Variant& key = Arg(a, 0);
        return key.IsNumber() ? d.f_.Item(static_cast<std::size_t>(key.ToLong())).Value()
                              : d.f_.Item(key.Text()).Value();
      });
      t.Method("Add", [](FieldsDispatch& d, const std::vector<Variant>& a) {
        d.f_.Add(Arg(a, 0).Text());
        return Variant();
      });
      t.Method("Exists", [](FieldsDispatch& d, const std::vector<Variant>& a) {
        return Variant(d.f_.Exists(Arg(a, 0).Text()));
      });
      return t;
    }();
    return table;
  }

  // A field's value is kept in the field, which lives as long as the report's Fields do.
  [[nodiscard]] const Variant* KeptAt(std::string_view name) const override {
    if (Table().Find(name) != nullptr) return nullptr;
    const ReportField* field = f_.Find(name);
    return field != nullptr ? &field->Value() : nullptr;
  }

 protected:
  [[nodiscard]] bool HasOther(std::string_view name) const override { return f_.Exists(name); }
  [[nodiscard]] Variant GetOther(std::string_view name) override { return f_.Item(name).Value(); }
  void SetOther(std::string_view name, const Variant& value) override {
    f_.Item(name).SetValue(value);
  }

 private:
  Fields& f_;
};

class RecordsetDispatch : public TableDispatch<RecordsetDispatch> {
 public:
  explicit RecordsetDispatch(std::shared_ptr<Recordset> rs) : rs_(std::move(rs)) {}
  [[nodiscard]] std::string TypeName() const override { return "Recordset"; }

  static const MemberTable<RecordsetDispatch>& Table() {
    static const MemberTable<RecordsetDispatch> table = [] {
      MemberTable<RecordsetDispatch> t;
      t.Property("EOF", [](RecordsetDispatch& d) { return Variant(d.rs_->Eof()); });
      t.Property("BOF", [](RecordsetDispatch& d) { return Variant(d.rs_->Bof()); });
      t.Property("RecordCount", [](RecordsetDispatch& d) { return Variant(d.rs_->RecordCount()); });
      t.Method("MoveNext", [](RecordsetDispatch& d, const std::vector<Variant>&) {
        d.rs_->MoveNext();
        return Variant();
      });
      t.Method("MoveFirst", [](RecordsetDispatch& d, const std::vector<Variant>&) {
        d.rs_->MoveFirst();
        return Variant();
      });
      for (const char* name : {"Item", "Fields"}) {
        t.Method(name, [](RecordsetDispatch& d, const std::vector<Variant>& a) {
          const Variant& key = Arg(a, 0);
          return key.IsNumber() ? d.rs_->Value(static_cast<int>(key.ToLong()))
                                : d.rs_->Value(std::string_view(key.Text()));
        });
      }
      return t;
    }();
    return table;
  }

 protected:
  [[nodiscard]] bool HasOther(std::string_view name) const override {
    return rs_->FieldIndex(name) >= 0;
  }
  [[nodiscard]] Variant GetOther(std::string_view name) override { return rs_->Value(name); }

 private:
  std::shared_ptr<Recordset> rs_;
};

class DataControlDispatch : public TableDispatch<DataControlDispatch> {
 public:
  explicit DataControlDispatch(DataControl& dc) : dc_(dc) {}
  [[nodiscard]] std::string TypeName() const override { return "DataControl"; }

  static const MemberTable<DataControlDispatch>& Table() {
    static const MemberTable<DataControlDispatch> table = [] {
      MemberTable<DataControlDispatch> t;
      t.Property(
          "Source", [](DataControlDispatch& d) { return Variant(d.dc_.Source()); },
          [](DataControlDispatch& d, const Variant& v) { d.dc_.SetSource(v.Text()); });
      t.Property("ConnectionString",
                 [](DataControlDispatch& d) { return Variant(d.dc_.ConnectionString()); });
      t.Property("Recordset", [](DataControlDispatch& d) {
        return d.dc_.Recordset()
                   ? Variant(std::static_pointer_cast<Object>(DispatchRecordset(d.dc_.Recordset())))
                   : Variant();
      });
      return t;
    }();
    return table;
  }

 private:
  DataControl& dc_;
};

class ParameterDispatch : public TableDispatch<ParameterDispatch> {
 public:
  explicit ParameterDispatch(ParameterPtr p) : p_(std::move(p)) {}
  [[nodiscard]] std::string TypeName() const override { return "Parameter " + p_->Name; }

  static const MemberTable<ParameterDispatch>& Table() {
    static const MemberTable<ParameterDispatch> table = [] {
      MemberTable<ParameterDispatch> t;
      t.Property(
          "Value", [](ParameterDispatch& d) { return d.p_->Value; },
          [](ParameterDispatch& d, const Variant& v) { d.p_->Value = v; });
      t.Property("Name", [](ParameterDispatch& d) { return Variant(d.p_->Name); });
      t.Property("Caption", [](ParameterDispatch& d) { return Variant(d.p_->Label()); });
      return t;
    }();
    return table;
  }

 private:
  ParameterPtr p_;
};

class ParametersDispatch : public TableDispatch<ParametersDispatch> {
 public:
  explicit ParametersDispatch(Parameters& p) : p_(p) {}
  [[nodiscard]] std::string TypeName() const override { return "Parameters"; }

  static const MemberTable<ParametersDispatch>& Table() {
    static const MemberTable<ParametersDispatch> table = [] {
      MemberTable<ParametersDispatch> t;
      t.Property("Count", [](ParametersDispatch& d) {
        return Variant(static_cast<std::int64_t>(d.p_.Count()));
      });
      t.Method("Exists", [](ParametersDispatch& d, const std::vector<Variant>& a) {
        return Variant(d.p_.Exists(Arg(a, 0).Text()));
      });
      t.Method("Item", [](ParametersDispatch& d, const std::vector<Variant>& a) {
        return d.Item(Arg(a, 0).Text());
      });
      return t;
    }();
    return table;
  }

 protected:
  [[nodiscard]] bool HasOther(std::string_view name) const override { return p_.Exists(name); }
  [[nodiscard]] Variant GetOther(std::string_view name) override { return Item(name); }

 private:
  Variant Item(std::string_view name) {
    ParameterPtr p = p_.Find(name);
    if (!p) (void)p_.Item(name);  // throws, naming the parameter
    return std::static_pointer_cast<Object>(std::make_shared<ParameterDispatch>(p));
  }
  Parameters& p_;
};

class ReportDispatch : public TableDispatch<ReportDispatch> {
 public:
  explicit ReportDispatch(ActiveReport& r) : r_(r) {}
  explicit ReportDispatch(std::shared_ptr<ActiveReport> r) : r_(*r), owned_(std::move(r)) {}
  [[nodiscard]] std::string TypeName() const override { return r_.DesignerName(); }
  [[nodiscard]] std::shared_ptr<ActiveReport> Owned() const { return owned_; }
  // Its Fields, data control, sections and controls stay the report's for the whole run.
  [[nodiscard]] bool Lasting(std::string_view name) const override {
    return EqualsIgnoreCase(name, "Fields") || EqualsIgnoreCase(name, "DataControl") ||
           EqualsIgnoreCase(name, "datData") || (Table().Find(name) == nullptr && HasOther(name));
  }

  static const MemberTable<ReportDispatch>& Table() {
    static const MemberTable<ReportDispatch> table = [] {
      MemberTable<ReportDispatch> t;
      t.Property(
          "Caption", [](ReportDispatch& d) { return Variant(d.r_.Caption()); },
          [](ReportDispatch& d, const Variant& v) { d.r_.SetCaption(v.Text()); });
      t.Property(
          "documentName", [](ReportDispatch& d) { return Variant(d.r_.documentName()); },
          [](ReportDispatch& d, const Variant& v) { d.r_.SetDocumentName(v.Text()); });
      t.Property("PageNumber", [](ReportDispatch& d) { return Variant(d.r_.PageNumber()); });
      t.Property("Fields", [](ReportDispatch& d) {
        return Variant(
            std::static_pointer_cast<Object>(std::make_shared<FieldsDispatch>(d.r_.Fields())));
      });
      for (const char* name : {"DataControl", "datData"}) {
        t.Property(name, [](ReportDispatch& d) {
          return Variant(std::static_pointer_cast<Object>(
              std::make_shared<DataControlDispatch>(d.r_.DataControl())));
        });
      }
      t.Method("Sections", [](ReportDispatch& d, const std::vector<Variant>& a) {
        const Variant& key = Arg(a, 0);
        Section& s = key.IsNumber() ? d.r_.Sections().Item(static_cast<std::size_t>(key.ToLong()))
                                    : d.r_.Sections().Item(key.Text());
        return Variant(std::static_pointer_cast<Object>(std::make_shared<SectionDispatch>(s)));
      });
      t.Method("Cancel", [](ReportDispatch& d, const std::vector<Variant>&) {
        d.r_.Cancel();
        return Variant();
      });
      return t;
    }();
    return table;
  }

 protected:
  [[nodiscard]] bool HasOther(std::string_view name) const override {
    return r_.Sections().Find(name) != nullptr || r_.FindControl(name) != nullptr;
  }
  [[nodiscard]] Variant GetOther(std::string_view name) override {
    if (Section* s = r_.Sections().Find(name)) {
      return std::static_pointer_cast<Object>(std::make_shared<SectionDispatch>(*s));
    }
    return std::static_pointer_cast<Object>(std::make_shared<ControlDispatch>(r_.Field(name)));
  }

 private:
  ActiveReport& r_;
  std::shared_ptr<ActiveReport> owned_;
};

}  // namespace

std::shared_ptr<Dispatch> DispatchReport(ActiveReport& report) {
  return std::make_shared<ReportDispatch>(report);
}

std::shared_ptr<Dispatch> DispatchReport(std::shared_ptr<ActiveReport> report) {
  return std::make_shared<ReportDispatch>(std::move(report));
}

std::shared_ptr<ActiveReport> ReportOf(const Variant& value) {
  auto object = value.IsObject() ? value.ToObject() : nullptr;
  if (auto* d = dynamic_cast<ReportDispatch*>(object.get())) return d->Owned();
  return nullptr;
}

std::shared_ptr<Dispatch> DispatchRecordset(std::shared_ptr<Recordset> rs) {
  return std::make_shared<RecordsetDispatch>(std::move(rs));
}

std::shared_ptr<Dispatch> DispatchParameters(Parameters& parameters) {
  return std::make_shared<ParametersDispatch>(parameters);
}

}  // namespace trellin
